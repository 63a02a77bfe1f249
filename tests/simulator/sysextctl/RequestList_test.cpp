#include "simulator/sysextctl/RequestList.h"
#include "tests/simulator/support/Printing.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace simulator::ctl {

namespace {

RequestEntry request() {
    return {3,      ":1.7", "token", "/Applications/Driver Manager.app", "activation", "com.kelvra.ip-camera.cmio",
            "user", 90'250};
}

} // namespace

TEST(TheRequests, AreOneLineIfThereIsNone) {
    EXPECT_EQ(requestsAsText({}), "0 request(s)\n");
    EXPECT_EQ(requestsAsJson({}), "[]\n");
}

TEST(TheRequests, AreShownInColumnsSeparatedByTabs) {
    EXPECT_EQ(requestsAsText({request()}),
              "1 request(s)\n"
              "number\tkind\tbundleID\tsince (s)\tapplication\t[stage]\n"
              "3\tactivation\tcom.kelvra.ip-camera.cmio\t90.250\t/Applications/Driver Manager.app\t[user]\n");
}

TEST(TheRequestsAsJson, HaveEveryField) {
    const auto array = QJsonDocument::fromJson(requestsAsJson({request()}).toUtf8()).array();
    ASSERT_EQ(array.size(), 1);
    const auto object = array.at(0).toObject();
    EXPECT_EQ(object["number"], 3);
    EXPECT_EQ(object["client"], ":1.7");
    EXPECT_EQ(object["token"], "token");
    EXPECT_EQ(object["application"], "/Applications/Driver Manager.app");
    EXPECT_EQ(object["kind"], "activation");
    EXPECT_EQ(object["identifier"], "com.kelvra.ip-camera.cmio");
    EXPECT_EQ(object["stage"], "user");
    EXPECT_EQ(object["since"], 90'250);
}

} // namespace simulator::ctl
