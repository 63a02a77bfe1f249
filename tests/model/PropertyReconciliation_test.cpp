#include "tests/model/ModelTest.h"

#include <string>

namespace model {
namespace {

using platform::fake::awaitingCopy;
using platform::fake::copyOf;
using platform::fake::enabledCopy;
using platform::fake::printedLines;
using platform::fake::uninstallingCopy;
using testing::ElementsAre;

class AnAnswer : public ModelTest {};
class TheVersion : public ModelTest {};
class ThePrintedLine : public ModelTest {};

TEST_F(AnAnswer, WithoutCopiesKeepsWhatWasKnown) {
    answer({enabledCopy(camera, "2.1", "2105")});
    const auto before = texts();
    answer({});
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(printedLines().size(), 1U);
}

TEST_F(AnAnswer, WhoseFirstCopyHasNoRecordChangesAndPrintsNothing) {
    answer({enabledCopy("com.kelvra.unknown", "1", "1"), enabledCopy(camera, "2.1", "2105")});
    EXPECT_EQ(texts(), initialTexts());
    EXPECT_TRUE(printedLines().empty());
}

TEST_F(AnAnswer, IsMatchedByTheWholeIdentifierAndItsCase) {
    for (const auto* const stranger :
         {"", "com.kelvra.ip-camera.CMIO", "com.kelvra.ip-camera", " com.kelvra.ip-camera.cmio",
          "com.kelvra.ip-camera.cmio ", "com.kelvra.ip-c\u00E1mera.cmio"}) {
        answer({enabledCopy(stranger, "2.1", "2105")});
        EXPECT_EQ(texts(), initialTexts()) << stranger;
    }
    EXPECT_TRUE(printedLines().empty());
}

TEST_F(AnAnswer, IsMatchedByItsFirstCopyAndNotByItsRequest) {
    model->enumerate();
    service().foundProperties(service().latest(Kind::properties, base), {enabledCopy(network, "2.1", "2105")});
    deliver();
    EXPECT_THAT(texts(), ElementsAre(initialBase, initialCamera,
                                     "com.kelvra.driverkit.usb-to-poe 'Enabled' present enabled '2.1/2105' Ethernet "
                                     "'Network Driver' 2105"));
}

TEST_F(AnAnswer, OfMixedIdentifiersTouchesOnlyTheRecordOfTheFirst) {
    answer({awaitingCopy(camera, "2.1", "2105"), enabledCopy(base, "1", "1"),
            enabledCopy("com.kelvra.unknown", "1", "1"), uninstallingCopy(camera, "2.0", "2000"),
            enabledCopy(network, "3", "3")});
    EXPECT_THAT(texts(), ElementsAre(initialBase,
                                     "com.kelvra.ip-camera.cmio 'Await approval' present awaiting uninst 'n/a' "
                                     "VideoCamera 'Camera Driver' 0",
                                     initialNetwork));
}

TEST_F(AnAnswer, GoesToTheFirstOfTwoRecordsWithOneIdentifier) {
    setRecords({recordOf(base), recordOf(camera, "first"), recordOf(camera, "second")});
    answer({enabledCopy(camera, "1", "1")});
    EXPECT_TRUE(record(1).present);
    EXPECT_FALSE(record(2).present);
}

TEST_F(AnAnswer, WithoutRecordsChangesAndPrintsNothing) {
    model->enumerate();
    setRecords({});
    service().foundProperties(0, {enabledCopy(base, "2.1", "2105")});
    deliver();
    EXPECT_TRUE(model->sei().empty());
    EXPECT_TRUE(printedLines().empty());
}

TEST_F(AnAnswer, MovesNoStateStoresNoErrorLogsNothingAndSubmitsNothing) {
    for (const auto each : allStates) {
        setState(each);
        answer({enabledCopy(camera, "2.1", "2105")});
        EXPECT_EQ(state(), each);
    }
    EXPECT_EQ(lastError(), "An error has occured.");
    EXPECT_TRUE(platform::fake::loggedLines().empty());
    EXPECT_EQ(service().submissions().size(), allStates.size() * enumeration().size());
}

/// Answers with copies of the camera, and what the model knows then: its state, flags, and version.
struct Reported {
    const char* name;
    bool needsReboot;
    std::vector<std::vector<platform::OSSystemExtensionProperties>> answers;
    std::string known;
};

void PrintTo(const Reported& reported, std::ostream* out) {
    *out << reported.name;
}

const auto enabled = enabledCopy(camera, "1.2", "345");
const auto hundred = enabledCopy(camera, "1.0", "100");
const auto noInteger = enabledCopy(camera, "1.1", "1.1.0");
const auto awaiting = awaitingCopy(camera, "1.3", "400");
const auto uninstalling = uninstallingCopy(camera, "1.1", "300");
const auto plain = copyOf(camera, "1.3", "400");
const platform::OSSystemExtensionProperties everything{camera, "1.2", "345", true, true, true, ""};

const Reported reports[]{
    {"AnEnabledCopy", false, {{enabled}}, "'Enabled' present enabled '1.2/345' 345"},
    {"SeveralThatAreTheSame", false, {{enabled, enabled}}, "'Enabled' present enabled '1.2/345' 345"},
    {"AnAwaitingCopy", false, {{awaiting}}, "'Await approval' present awaiting 'n/a' 0"},
    {"AnUninstallingCopy", false, {{uninstalling}}, "'Uninstalling' present uninst 'n/a' 0"},
    {"ACopyThatIsNothing", false, {{plain}}, "'' present 'n/a' 0"},
    {"AnEnabledThenAnAwaitingOne", false, {{enabled}, {awaiting}}, "'Await approval' present awaiting '1.2/345' 345"},
    {"AnEnabledAndAnAwaitingOne", false, {{enabled, awaiting}}, "'Enabled' present enabled awaiting '1.2/345' 345"},
    {"FlagsThatNoneHasAnyMore", false, {{everything, awaiting}, {plain, plain}}, "'' present '1.2/345' 345"},
    // The version is that of the last copy, and the integer that of the last one that converts.
    {"ABuildThatIsNoInteger", false, {{hundred, noInteger}}, "'Enabled' present enabled '1.1/1.1.0' 100"},
    {"ALowerBuild", false, {{enabled, hundred}}, "'Enabled' present enabled '1.0/100' 100"},
    {"ANegativeBuild", false, {{enabledCopy(camera, "1", "-7")}}, "'Enabled' present enabled '1/-7' -7"},
    {"ABuildWithASign", false, {{enabledCopy(camera, "1", "+7")}}, "'Enabled' present enabled '1/+7' 7"},
    {"NoTextAtAll", false, {{enabledCopy(camera, "", "")}}, "'Enabled' present enabled '/' 0"},
    // Before a reboot.
    {"OneThatIsEverything", true, {{everything}}, "'Enabled' present enabled awaiting reboot uninst '1.2/345' 345"},
    {"TwoFlags", true, {{plain, uninstalling, awaiting}}, "'Await approval' present awaiting reboot uninst 'n/a' 0"},
    {"AnUninstallingCopyBeforeAReboot", true, {{uninstalling}}, "'Need reboot' present reboot uninst 'n/a' 0"},
    {"ACopyThatIsNothingBeforeAReboot", true, {{plain}}, "'Need reboot' present reboot 'n/a' 0"},
};

class WhatIsKnownOfTheCamera : public ModelTest, public testing::WithParamInterface<Reported> {};

TEST_P(WhatIsKnownOfTheCamera, IsWhatItsCopiesSayAndEachAnswerIsPrintedOnce) {
    if (GetParam().needsReboot) finish(Result::willCompleteAfterReboot);
    for (const auto& copies : GetParam().answers)
        answer(copies);
    const std::string unchanged = " VideoCamera 'Camera Driver'";
    std::string known = text(cameraPosition);
    known.erase(known.find(unchanged), unchanged.size());
    EXPECT_EQ(known, std::string{camera} + ' ' + GetParam().known);
    EXPECT_EQ(printedLines().size(), GetParam().answers.size());
}

INSTANTIATE_TEST_SUITE_P(After, WhatIsKnownOfTheCamera, testing::ValuesIn(reports),
                         [](const auto& which) { return which.param.name; });

TEST_F(TheVersion, ThatIsNoIntegerIsShownAndKeepsTheInteger) {
    answer({enabledCopy(camera, "1.0", "100")});
    for (const auto* const build :
         {"2.1.5", "9223372036854775808", "-9223372036854775809", "+-5", "1 ", "\u0663", "b1", ""}) {
        answer({enabledCopy(camera, "\u00FC", build)});
        EXPECT_EQ(record(cameraPosition).version, std::string{"\u00FC/"} + build);
        EXPECT_EQ(record(cameraPosition).intversion, 100) << build;
        EXPECT_TRUE(record(cameraPosition).enabled) << build;
        EXPECT_EQ(record(cameraPosition).state, "Enabled") << build;
    }
}

TEST_F(ThePrintedLine, TellsIdentifierVersionStateAndTheThreeFlagsOncePerAnswer) {
    answer({enabledCopy(base, "2.1", "2105")});
    answer({copyOf(network, "2.1", "2105")});
    answer({awaitingCopy(camera, "1", "1")});
    answer({uninstallingCopy(camera, "1", "1")});
    answer({enabledCopy(camera, "1", "1"), awaitingCopy(camera, "2", "2"), enabledCopy(base, "1", "1")});
    EXPECT_THAT(printedLines(), ElementsAre("com.kelvra.driverkit.base 2.1/2105 State: Enabled [true false false]",
                                            "com.kelvra.driverkit.usb-to-poe n/a State:  [false false false]",
                                            "com.kelvra.ip-camera.cmio n/a State: Await approval [false true false]",
                                            "com.kelvra.ip-camera.cmio n/a State: Uninstalling [false false true]",
                                            "com.kelvra.ip-camera.cmio 1/1 State: Enabled [true true false]"));
}

} // namespace
} // namespace model
