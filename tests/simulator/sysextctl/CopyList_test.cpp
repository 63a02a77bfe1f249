#include "simulator/sysextctl/CopyList.h"
#include "tests/simulator/support/Printing.h"
#include "tests/simulator/support/ScriptedControl.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace simulator::ctl {

using tests::copyIn;

namespace {

constexpr auto camera = "com.kelvra.ip-camera.cmio";
constexpr auto network = "com.kelvra.driverkit.usb-to-poe";

/// The line of a single copy, without the three above it.
std::string rowOf(const CopyEntry& copy) {
    return copiesAsText({copy}).split(u'\n').at(3).toStdString();
}

CopyEntry inState(const QString& state, bool enabled, bool active) {
    auto copy = copyIn("preparing");
    copy.state = state;
    copy.enabled = enabled;
    copy.active = active;
    return copy;
}

} // namespace

TEST(TheList, IsOneLineIfNothingIsThere) {
    EXPECT_EQ(copiesAsText({}), "0 extension(s)\n");
}

TEST(TheList, ShowsEachCopyInColumnsSeparatedByTabs) {
    EXPECT_EQ(copiesAsText({copyIn("enabled"), copyIn("uninstalling", camera, "2.0", "2004")}),
              "2 extension(s)\n"
              "--- com.apple.system_extension.cmio\n"
              "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
              "*\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\tCamera\t[activated enabled]\n"
              "\t\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.0/2004)\tCamera\t"
              "[terminated waiting to uninstall on reboot]\n");
}

TEST(TheList, HasAHeadForEachCategoryThatHasACopy) {
    EXPECT_EQ(copiesAsText({copyIn("waiting"), copyIn("disabled", network)}),
              "2 extension(s)\n"
              "--- com.apple.system_extension.cmio\n"
              "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
              "\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\tCamera\t[activated waiting for user]\n"
              "--- com.apple.system_extension.driver_extension\n"
              "enabled\tactive\tteamID\tbundleID (version)\tname\t[state]\n"
              "\t\tKELVRA0001\tcom.kelvra.driverkit.usb-to-poe (2.1/2105)\tNetwork\t[activated disabled]\n");
}

TEST(TheList, ShowsTheStarsThatTheServiceGives) {
    EXPECT_EQ(rowOf(inState("terminating for uninstall", true, true)).substr(0, 4), "*\t*\t");
    EXPECT_EQ(rowOf(inState("staging", false, false)).substr(0, 3), "\t\tK");
}

TEST(TheList, KeepsItsColumnsWhateverANameHolds) {
    auto copy = copyIn("enabled");
    copy.name = "Two\tcolumns\nand lines %1 %2";
    EXPECT_EQ(rowOf(copy), "*\t*\tKELVRA0001\tcom.kelvra.ip-camera.cmio (2.1/2105)\t"
                           "Two columns and lines %1 %2\t[activated enabled]");
}

TEST(TheList, CanBeOfOneCategory) {
    const QList<CopyEntry> both{copyIn("waiting"), copyIn("disabled", network)};
    const auto drivers = copiesOf(both, "com.apple.system_extension.driver_extension");
    ASSERT_EQ(drivers.size(), 1);
    EXPECT_EQ(drivers.first().identifier, network);
    EXPECT_EQ(copiesOf(both, {}).size(), 2);
    EXPECT_EQ(copiesOf(both, "com.apple.system_extension.network_extension").size(), 0);
}

TEST(TheCategories, AreNamedInFullOrByTheirLastPart) {
    EXPECT_EQ(categoryNamed("endpoint_security"), "com.apple.system_extension.endpoint_security");
    EXPECT_EQ(categoryNamed("com.apple.system_extension.network_extension"),
              "com.apple.system_extension.network_extension");
    EXPECT_EQ(categoryNamed("camera"), "");
    EXPECT_EQ(categoryNamed(""), "");
}

TEST(TheJsonList, IsAnEmptyArrayIfNothingIsThere) {
    EXPECT_EQ(copiesAsJson({}), "[]\n");
}

TEST(TheJsonList, HasOneObjectALineWithEveryColumn) {
    auto copy = copyIn("enabled");
    copy.name = "A \"quoted\" name";
    copy.number = 7;
    copy.application = "/Applications/Driver Manager.app";
    const auto text = copiesAsJson({copy, copyIn("disabled", network)});
    EXPECT_EQ(text.count(u'\n'), 4);
    const auto array = QJsonDocument::fromJson(text.toUtf8()).array();
    ASSERT_EQ(array.size(), 2);
    const auto first = array.at(0).toObject();
    EXPECT_EQ(first["category"], "com.apple.system_extension.cmio");
    EXPECT_EQ(first["team"], "KELVRA0001");
    EXPECT_EQ(first["identifier"], camera);
    EXPECT_EQ(first["shortVersion"], "2.1");
    EXPECT_EQ(first["version"], "2105");
    EXPECT_EQ(first["name"], "A \"quoted\" name");
    EXPECT_EQ(first["state"], "activated enabled");
    EXPECT_EQ(first["condition"], "enabled");
    EXPECT_EQ(first["enabled"], true);
    EXPECT_EQ(first["active"], true);
    EXPECT_EQ(first["number"], 7);
    EXPECT_EQ(first["application"], "/Applications/Driver Manager.app");
}

TEST(ACondition, HoldsIfAnyCopyOfTheExtensionIsInIt) {
    const QList<CopyEntry> copies{copyIn("enabled", camera, "2.0", "2004"), copyIn("waiting")};
    EXPECT_TRUE(isInCondition(copies, camera, "enabled"));
    EXPECT_TRUE(isInCondition(copies, camera, "waiting"));
    EXPECT_FALSE(isInCondition(copies, camera, "disabled"));
    EXPECT_FALSE(isInCondition(copies, network, "enabled"));
}

TEST(TheConditionAbsent, HoldsIfNoCopyIsThereWhateverItsState) {
    EXPECT_TRUE(isInCondition({}, camera, "absent"));
    EXPECT_TRUE(isInCondition({copyIn("enabled")}, network, "absent"));
    EXPECT_FALSE(isInCondition({copyIn("uninstalling")}, camera, "absent"));
    EXPECT_FALSE(isInCondition({copyIn("preparing")}, camera, "absent"));
}

} // namespace simulator::ctl
