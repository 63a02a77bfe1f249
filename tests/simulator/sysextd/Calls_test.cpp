// What anyone may call: the lists, what is to be done, and calls that make no sense.

#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFileInfo>
#include <QSignalSpy>

namespace simulator::tests {

namespace {

class TheService : public OnASimulatedMac {};

TEST_F(TheService, ListsEachCopyWithAllThatIsKnownOfIt) {
    EXPECT_EQ(mac.does("install com.kelvra.driverkit.usb-to-poe 1.0 1"), "");
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1.0 2 waiting"), "");
    const QList<CopyEntry> list = must(mac.control().ListCopies()).value();
    ASSERT_EQ(list.size(), 2);
    EXPECT_EQ(list[0].category, "com.apple.system_extension.cmio");
    EXPECT_EQ(list[0].team, "KELVRA0001");
    EXPECT_EQ(list[0].identifier, camera);
    EXPECT_EQ(list[0].shortVersion, "1.0");
    EXPECT_EQ(list[0].version, "2");
    EXPECT_EQ(list[0].name, "Camera");
    EXPECT_EQ(list[0].state, "activated waiting for user");
    EXPECT_EQ(list[0].condition, "waiting");
    EXPECT_FALSE(list[0].enabled);
    EXPECT_TRUE(list[0].active);
    EXPECT_GT(list[0].number, list[1].number);
    EXPECT_EQ(list[0].application, "");
    EXPECT_TRUE(list[1].enabled);
}

TEST_F(TheService, ListsEachRequestWithAllThatIsKnownOfIt) {
    EXPECT_EQ(mac.does("advance 2s"), "2.000 s\n");
    const auto application = mac.application();
    application->submit("a", "activation", camera);
    ASSERT_TRUE(application->hears("a needs approval"));
    const QList<RequestEntry> list = must(mac.control().ListRequests()).value();
    ASSERT_EQ(list.size(), 1);
    EXPECT_GT(list[0].number, 0);
    EXPECT_TRUE(list[0].client.startsWith(':'));
    EXPECT_EQ(list[0].token, "a");
    EXPECT_EQ(list[0].application, QFileInfo{mac.applications()}.canonicalFilePath() + "/Driver Manager.app");
    EXPECT_EQ(list[0].kind, "activation");
    EXPECT_EQ(list[0].identifier, camera);
    EXPECT_EQ(list[0].stage, "user");
    EXPECT_EQ(list[0].since, 2000);
}

TEST_F(TheService, TellsThatSomethingChangedOnceItCanBeSeen) {
    const QSignalSpy changed{&mac.control(), &Control::Changed};
    const QSignalSpy events{&mac.control(), &Control::Event};
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1.0 1"), "");
    ASSERT_TRUE(until([&] { return changed.count() == 1; }));
    ASSERT_EQ(events.count(), 1);
    EXPECT_EQ(events[0], (QVariantList{0LL, camera, "1.0/1: absent -> activated enabled", ""}));
}

TEST_F(TheService, SaysByTheNameOfTheErrorWhyItRefuses) {
    const QByteArray forbidding = "<plist version=\"1.0\"><dict><key>AllowUserOverrides</key><false/></dict></plist>";
    EXPECT_EQ(mac.does({"allow", camera}), "NothingWaiting");
    EXPECT_EQ(mac.does("allow com.example.unknown"), "UnknownIdentifier");
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1 1 asleep"), "InvalidArgument");
    EXPECT_EQ(mac.does("applications relative"), "InvalidArgument");
    EXPECT_EQ(mac.does(QStringList{"applications"} + QStringList(65, "/a")), "LimitExceeded");
    EXPECT_EQ(mac.does({"profile", "a.plist"}, forbidding), "");
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1 1"), "ForbiddenByProfile");
}

// Calls that make no sense -------------------------------------------------------------------------------------------

const QString huge(4'000'000, 'x');

class ABadCall : public TheService {
protected:
    ABadCall() { EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 1.0 1"), ""); }
    /// What it did, it did to the same service as in the beginning, which still has what it had and works.
    ~ABadCall() override {
        EXPECT_EQ(mac.processOfService(), process_);
        EXPECT_EQ(mac.copies(camera), std::vector<std::string>{"1 enabled"});
        EXPECT_EQ(mac.does({"disable", camera}), "");
    }

    /// The last part of the name of the error that an application gets.
    std::string errorOf(const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, method);
        message.setArguments(arguments);
        return program_.call(message).errorName().section('.', -1).toStdString();
    }

private:
    QDBusConnection program_ = mac.connect();
    const uint process_ = mac.processOfService();
};

TEST_F(ABadCall, WithWordsThatMeanNothingIsRefused) {
    EXPECT_EQ(errorOf("Submit", {"", "properties", camera}), "InvalidArgument");
    EXPECT_EQ(errorOf("Submit", {"a", "reactivation", camera}), "InvalidArgument");
    EXPECT_EQ(errorOf("AnswerReplacement", {"a", "replace"}), "InvalidArgument");
    EXPECT_EQ(errorOf("AnswerReplacement", {"a", "perhaps"}), "InvalidArgument");
    EXPECT_EQ(mac.does(QStringList{}), "InvalidArgument");
    EXPECT_EQ(mac.does(QStringList{""}), "InvalidArgument");
}

TEST_F(ABadCall, IsQuotedInOneShortLine) {
    auto reply = mac.control().Do({"switch", "a\nb" + huge, "x"}, {});
    reply.waitForFinished();
    const QString text = reply.error().message();
    EXPECT_EQ(text.size(), 200);
    EXPECT_TRUE(text.startsWith("unknown switch \"a b"));
}

} // namespace

} // namespace simulator::tests
