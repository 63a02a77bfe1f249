#include "simulator/scenario/Play.h"

#include "simulator/disk/ProfileReader.h"
#include "simulator/scenario/CoreMac.h"

namespace simulator::scenario {
namespace {

using testing::HasSubstr;

constexpr auto activated = "switch authorization granted\n"
                           "activate com.kelvra.ip-camera.cmio\n"
                           "expect needs approval\n"
                           "allow com.kelvra.ip-camera.cmio\n"
                           "expect finished 0\n";

/// "LINE: what was there instead", or "as it says".
std::string played(const std::string& text) {
    CoreMac mac{readProfile};
    const auto mismatch = play(readScenario(text, "a.scenario", SCENARIOS), mac);
    return mismatch ? std::to_string(mismatch->line) + ": " + mismatch->text : "as it says";
}

std::string afterActivation(const std::string& text) {
    return played(activated + text);
}

// What goes as it says -----------------------------------------------------------------------------------------------

TEST(AScenarioThatIsPlayed, GoesAsItSaysOnThePlainRoad) {
    EXPECT_EQ(afterActivation("expect copies com.kelvra.ip-camera.cmio 2.1/2105 activated enabled\n"
                              "expect requests none\n"
                              "expect nothing\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, AnswersTheReplacementQuestionWithReplace) {
    EXPECT_EQ(played("install com.kelvra.ip-camera.cmio 2.0 2004\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect asked to replace 2.0/2004 by 2.1/2105\n"
                     "expect finished 0\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, AnswersTheReplacementQuestionAsItIsTold) {
    EXPECT_EQ(played("install com.kelvra.ip-camera.cmio 2.0 2004\n"
                     "activate com.kelvra.ip-camera.cmio answering cancel\n"
                     "expect asked to replace 2.0/2004 by 2.1/2105\n"
                     "expect failed 11\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, MayAnswerTheReplacementQuestionLater) {
    EXPECT_EQ(played("install com.kelvra.ip-camera.cmio 2.0 2004\n"
                     "activate com.kelvra.ip-camera.cmio answering later\n"
                     "expect asked to replace 2.0/2004 by 2.1/2105\n"
                     "expect request com.kelvra.ip-camera.cmio replacement\n"
                     "answer com.kelvra.ip-camera.cmio replace\n"
                     "expect finished 0\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, TellsRequestsOfTheSameExtensionApart) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio called first\n"
                     "activate com.kelvra.ip-camera.cmio called second\n"
                     "expect needs approval to first\n"
                     "expect failed 12 to first\n"
                     "expect needs approval to second\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, KeepsTheAnswersOfApplicationsApart) {
    EXPECT_EQ(played("bundle Other\n"
                     "activate com.kelvra.ip-camera.cmio as Other\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect needs approval\n"
                     "expect nothing as \"Driver Manager\"\n"
                     "expect failed 4 as Other\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, ReadsTheProfilesBesideIt) {
    EXPECT_EQ(played("profile allow-team.mobileconfig\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect finished 0\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, SaysWhyAProfileIsRefused) {
    EXPECT_EQ(played("profile plain-road.scenario\n"),
              "1: \"profile plain-road.scenario\": the profile is no property list");
}

TEST(AScenarioThatIsPlayed, GoesOnWithTheStoreAloneWhenTheServiceDied) {
    EXPECT_EQ(played("fault next activate crash\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect nothing\n"
                     "expect requests none\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect needs approval\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, EndsEveryApplicationWithARestart) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio\n"
                     "expect needs approval\n"
                     "restart\n"
                     "allow com.kelvra.ip-camera.cmio\n"
                     "expect nothing\n"
                     "expect copies com.kelvra.ip-camera.cmio 2.1/2105 activated enabled\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, EndsAnApplicationThatQuits) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio\n"
                     "expect needs approval\n"
                     "quit \"Driver Manager\"\n"
                     "expect requests none\n"),
              "as it says");
}

TEST(AScenarioThatIsPlayed, EndsAnApplicationWhoseFilesChange) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio\n"
                     "expect needs approval\n"
                     "update \"Driver Manager\" to 2.2/2206\n"
                     "expect requests none\n"),
              "as it says");
}

// What does not ------------------------------------------------------------------------------------------------------

TEST(AMismatch, IsFoundInTheFirstAnswerThatIsAnother) {
    EXPECT_EQ(played("# Why\n"
                     "activate com.kelvra.ip-camera.cmio\n"
                     "expect finished 0\n"
                     "expect finished 1\n"),
              "3: \"expect finished 0\": Driver Manager heard needs approval to com.kelvra.ip-camera.cmio");
}

TEST(AMismatch, IsFoundWhereNothingWasAnswered) {
    EXPECT_EQ(played("restart\nexpect needs approval\n"), "2: \"expect needs approval\": Driver Manager heard nothing");
}

TEST(AMismatch, IsFoundWhereSomethingWasAnswered) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio\nexpect nothing\n"),
              "2: \"expect nothing\": Driver Manager heard needs approval to com.kelvra.ip-camera.cmio");
}

TEST(AMismatch, IsFoundAtTheLastLineWhereNoLineExpectsAnAnswer) {
    EXPECT_EQ(played("activate com.kelvra.ip-camera.cmio\nrestart\n# The end\n"),
              "2: no line expects what follows: Driver Manager heard needs approval to com.kelvra.ip-camera.cmio");
}

TEST(AMismatch, IsFoundInEachValueOfAnAnswer) {
    const std::string asked = "install com.kelvra.ip-camera.cmio 2.0 2004\nactivate com.kelvra.ip-camera.cmio\n";
    EXPECT_THAT(played(asked + "expect asked to replace 2.0/2003 by 2.1/2105\n"),
                HasSubstr("3: \"expect asked to replace 2.0/2003 by 2.1/2105\": Driver Manager heard "
                          "asked to replace 2.0/2004 by 2.1/2105"));
    EXPECT_THAT(played(asked + "expect asked to replace 2.0/2004 by 2.0/2105\n"), HasSubstr("3: "));
    EXPECT_THAT(played(asked + "expect asked to replace 2.0/2004 by 2.1/2105\nexpect finished 1\n"),
                HasSubstr("4: \"expect finished 1\": Driver Manager heard finished 0"));
}

TEST(AMismatch, IsFoundInEachPartOfAFailure) {
    const std::string failed = "fault next any 8 \"bad seal\"\nactivate com.kelvra.ip-camera.cmio\n";
    const std::string heard = ": Driver Manager heard failed 8 \"bad seal\" to com.kelvra.ip-camera.cmio";
    EXPECT_EQ(played(failed + "expect failed 8\n"), "as it says");
    EXPECT_EQ(played(failed + "expect failed 8 saying \"bad seal\"\n"), "as it says");
    EXPECT_EQ(played(failed + "expect failed 9\n"), "3: \"expect failed 9\"" + heard);
    EXPECT_EQ(played(failed + "expect failed 8 saying other\n"), "3: \"expect failed 8 saying other\"" + heard);
    EXPECT_EQ(played(failed + "expect failed 8 without description\n"),
              "3: \"expect failed 8 without description\"" + heard);
    EXPECT_EQ(played(failed + "expect failed 8 domain D\n"), "3: \"expect failed 8 domain D\"" + heard);
}

TEST(AMismatch, IsFoundInAFailureOfAnotherDomainOrWithADescription) {
    EXPECT_EQ(played("fault next any 8\nproperties com.x\nexpect failed 8 without description\n"), "as it says");
    EXPECT_EQ(played("fault next any 8 --domain D\nproperties com.x\nexpect failed 8 domain D\n"), "as it says");
    EXPECT_EQ(played("fault next any 8 --domain D\nproperties com.x\nexpect failed 8\n"),
              "3: \"expect failed 8\": Driver Manager heard failed 8 \"\" domain \"D\" to com.x");
}

TEST(AMismatch, IsFoundInWhatPropertiesTell) {
    const std::string asked = "properties com.kelvra.ip-camera.cmio\n";
    EXPECT_EQ(afterActivation(asked + "expect found 2.1/2105 enabled\n"), "as it says");
    EXPECT_EQ(afterActivation(asked + "expect found 2.1/2105 waiting\n"),
              "7: \"expect found 2.1/2105 waiting\": Driver Manager heard found 2.1/2105 enabled to "
              "com.kelvra.ip-camera.cmio");
    EXPECT_THAT(afterActivation(asked + "expect found 2.1/2106 enabled\n"), HasSubstr("7: "));
    EXPECT_THAT(afterActivation(asked + "expect found none\n"), HasSubstr("7: "));
    EXPECT_THAT(afterActivation(asked + "expect found 2.1/2105 enabled, 2.1/2105 enabled\n"), HasSubstr("7: "));
}

TEST(AMismatch, IsFoundInTheRequestThatAnAnswerIsAbout) {
    EXPECT_EQ(played("properties com.x called first\nexpect found none to second\n"),
              "2: \"expect found none to second\": Driver Manager heard found none to first");
}

TEST(AMismatch, IsFoundInTheCopies) {
    const std::string there = ": the copies of com.kelvra.ip-camera.cmio are: 2.1/2105 activated enabled";
    EXPECT_EQ(afterActivation("expect copies com.kelvra.ip-camera.cmio none\n"),
              "6: \"expect copies com.kelvra.ip-camera.cmio none\"" + there);
    EXPECT_EQ(afterActivation("expect copies com.kelvra.ip-camera.cmio 2.1/2105 activated disabled\n"),
              "6: \"expect copies com.kelvra.ip-camera.cmio 2.1/2105 activated disabled\"" + there);
    EXPECT_EQ(afterActivation("expect copy com.kelvra.ip-camera.cmio 2.1/2105 activated disabled\n"),
              "6: \"expect copy com.kelvra.ip-camera.cmio 2.1/2105 activated disabled\"" + there);
    EXPECT_EQ(afterActivation("expect copy com.x 2.1/2105 activated enabled\n"),
              "6: \"expect copy com.x 2.1/2105 activated enabled\": the copies of com.x are: none");
}

TEST(AMismatch, IsFoundInTheOrderOfCopiesButNotInACopyAmongOthers) {
    const std::string two = "install com.kelvra.ip-camera.cmio 2.0 2004 uninstalling\n"
                            "install com.kelvra.ip-camera.cmio 2.1 2105\n";
    const std::string dying = "2.0/2004 terminated waiting to uninstall on reboot";
    EXPECT_EQ(played(two + "expect copies com.kelvra.ip-camera.cmio " + dying + ", 2.1/2105 activated enabled\n"),
              "as it says");
    EXPECT_EQ(played(two + "expect copy com.kelvra.ip-camera.cmio " + dying + "\n"), "as it says");
    EXPECT_THAT(played(two + "expect copies com.kelvra.ip-camera.cmio 2.1/2105 activated enabled, " + dying + "\n"),
                HasSubstr("3: "));
}

TEST(AMismatch, IsFoundInTheOpenRequests) {
    const std::string waiting = "activate com.kelvra.ip-camera.cmio\nexpect needs approval\n";
    const std::string there = ": the open requests are: com.kelvra.ip-camera.cmio user";
    EXPECT_EQ(played(waiting + "expect requests 1\nexpect request com.kelvra.ip-camera.cmio user\n"), "as it says");
    EXPECT_EQ(played(waiting + "expect requests none\n"), "3: \"expect requests none\"" + there);
    EXPECT_EQ(played(waiting + "expect requests 2\n"), "3: \"expect requests 2\"" + there);
    EXPECT_EQ(played(waiting + "expect request com.kelvra.ip-camera.cmio silent\n"),
              "3: \"expect request com.kelvra.ip-camera.cmio silent\"" + there);
    EXPECT_EQ(played("expect request com.x user\n"), "1: \"expect request com.x user\": the open requests are: none");
}

TEST(AMismatch, IsFoundInADeedThatIsNotPossible) {
    EXPECT_EQ(played("allow com.kelvra.ip-camera.cmio\n"),
              "1: \"allow com.kelvra.ip-camera.cmio\": com.kelvra.ip-camera.cmio: nothing waits for approval");
    EXPECT_EQ(played("restart\nallow com.x\n"), "2: \"allow com.x\": com.x: no such extension");
    EXPECT_EQ(played("answer com.x replace\n"), "1: \"answer com.x replace\": no question about com.x is open");
    EXPECT_EQ(played("damage com.x.dext\n"), "1: \"damage com.x.dext\": Driver Manager carries no com.x.dext");
}

} // namespace
} // namespace simulator::scenario
