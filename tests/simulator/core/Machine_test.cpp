// What no line of a scenario can say: between two steps, in the outbox, over a stop of the service, and at the limits.

#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// "KIND: MESSAGE" of a refusal; "done" if there is none.
std::string textOf(const Verdict& verdict) {
    using Kind = Refusal::Kind;
    static const std::map<Kind, std::string> kinds{{Kind::nothingWaiting, "nothing waiting"},
                                                   {Kind::unknownIdentifier, "unknown identifier"},
                                                   {Kind::invalidArgument, "invalid argument"},
                                                   {Kind::limitExceeded, "limit exceeded"},
                                                   {Kind::forbiddenByProfile, "forbidden by profile"}};
    return verdict ? kinds.at(verdict->kind) + ": " + verdict->message : "done";
}

class AMachine : public testing::Test {
protected:
    Machine& machine() { return mac.machine(); }
    bool knows(const std::string& identifier) {
        const auto all = machine().identifiers();
        return std::count(all.begin(), all.end(), identifier) > 0;
    }

    SampleMac mac;
};

// From step to step ---------------------------------------------------------------------------------------------------

TEST_F(AMachine, AnswersNothingInsideTheSubmission) {
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::properties);
    EXPECT_THAT(machine().takeOutbox().answers, IsEmpty());
}

TEST_F(AMachine, ValidatesThenStagesThenWaitsForTheUser) {
    mac.submit("a", RequestKind::activation);
    EXPECT_THAT(mac.copies(), IsEmpty());
    for (const auto* const state : {"2105 validating", "2105 staging", "2105 activated waiting for user"}) {
        EXPECT_TRUE(machine().step());
        EXPECT_THAT(mac.copies(), ElementsAre(state));
    }
    EXPECT_FALSE(machine().step());
}

TEST_F(AMachine, TerminatesACopyBeforeItFinishesItsRemoval) {
    mac.set("authorization", "granted");
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::deactivation);
    mac.steps(1);
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminating for uninstall"));
    EXPECT_THAT(machine().takeOutbox().answers, IsEmpty());
}

TEST_F(AMachine, TakesTheStepsOfTwoRequestsInTurn) {
    mac.submit("a", RequestKind::activation, camera);
    mac.submit("b", RequestKind::activation, driver);
    mac.steps(2);
    EXPECT_THAT(mac.copies(camera), ElementsAre("2105 validating"));
    EXPECT_THAT(mac.copies(driver), ElementsAre("2105 validating"));
}

TEST_F(AMachine, DropsTheCopyOfARequestThatIsSupersededWhileItIsPrepared) {
    for (int steps = 1; steps < 3; ++steps) {
        mac.submit("a", RequestKind::activation);
        mac.steps(steps);
        mac.mustDo(machine().install(camera, {"0.0", "1"}, "disabled"));
        EXPECT_THAT(mac.heard(), ElementsAre("a: failed 12"));
        EXPECT_THAT(mac.copies(), ElementsAre("1 activated disabled"));
        machine().reset();
    }
}

TEST_F(AMachine, TerminatesTheCopyOfARemovalThatIsSuperseded) {
    mac.set("authorization", "granted");
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::deactivation);
    mac.steps(1);
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 12", "b: needs approval"));
    EXPECT_THAT(mac.copies(),
                ElementsAre("2105 terminated waiting to uninstall on reboot", "2105 activated waiting for user"));
}

/// A profile arrives after so many steps.
TEST_F(AMachine, FailsAnActivationWithTenWhereverTheProfileFindsIt) {
    for (int steps = 0; steps < 3; ++steps) {
        SampleMac another;
        another.submit("a", RequestKind::activation);
        another.steps(steps);
        another.forbid();
        another.rest();
        EXPECT_THAT(another.heard(), ElementsAre("a: failed 10")) << "after " << steps << " steps";
        EXPECT_THAT(another.copies(), IsEmpty());
    }
}

/// What is wrong since the first look at the bundle is found by the second.
TEST_F(AMachine, LooksAtTheBundleAgainWhenItValidates) {
    mac.submit("a", RequestKind::activation);
    mac.steps(1);
    mac.application().mayInstallExtensions = false;
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 2"));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

// Clients that leave
// ---------------------------------------------------------------------------------------------------

TEST_F(AMachine, GoesOnWithAnActivationWithoutItsClientUntilItWaits) {
    mac.submit("a", RequestKind::activation);
    mac.steps(1);
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    EXPECT_THAT(machine().requests(), IsEmpty());
}

TEST_F(AMachine, AsksNobodyInThePlaceOfAClientThatLeft) {
    mac.install("2004", "enabled");
    mac.submit("a", RequestKind::activation);
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
    EXPECT_THAT(machine().requests(), IsEmpty());
}

TEST_F(AMachine, EndsARemovalWithoutItsClient) {
    mac.set("authorization", "granted");
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::deactivation);
    mac.steps(1);
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 terminated waiting to uninstall on reboot"));
}

TEST_F(AMachine, LeavesTheRequestsOfOtherClientsAlone) {
    mac.activate("a");
    machine().clientLeft("other");
    EXPECT_THAT(machine().requests(), SizeIs(1));
}

TEST_F(AMachine, AnswersTheClientThatAskedAndNoOther) {
    mac.submit({"one", "a", sampleApplication, RequestKind::properties, camera});
    mac.submit({"two", "a", sampleApplication, RequestKind::properties, driver});
    mac.rest();
    const std::vector<Answer> answers = mac.takeOutbox().answers;
    ASSERT_THAT(answers, SizeIs(2));
    EXPECT_EQ(answers[0].client, "one");
    EXPECT_EQ(answers[1].client, "two");
}

// Restarts and lives -------------------------------------------------------------------------------------------------

/// A camera that is staged, and a driver that is validated.
class AMachineInTheMiddle : public AMachine {
protected:
    AMachineInTheMiddle() {
        mac.submit("a", RequestKind::activation, camera);
        mac.submit("b", RequestKind::activation, driver);
        mac.steps(3);
        EXPECT_THAT(mac.copies(camera), ElementsAre("2105 staging"));
        EXPECT_THAT(mac.copies(driver), ElementsAre("2105 validating"));
    }

    void expectThatItIsFinished() {
        EXPECT_THAT(mac.copies(camera), ElementsAre("2105 activated waiting for user"));
        EXPECT_THAT(mac.copies(driver), IsEmpty());
        EXPECT_THAT(machine().requests(), IsEmpty());
    }
};

TEST_F(AMachineInTheMiddle, FinishesWhatItHadBegunBeforeItRestarts) {
    machine().restart();
    EXPECT_TRUE(mac.takeOutbox().restarting);
    expectThatItIsFinished();
}

TEST_F(AMachineInTheMiddle, FinishesWhatItHadBegunWhenItComesBack) {
    mac.comeBack();
    expectThatItIsFinished();
    EXPECT_FALSE(mac.takeOutbox().restarting);
}

/// A new copy of an approved extension is staged and not yet enabled.
class AMachineThatStagesAnUpgrade : public AMachine {
protected:
    AMachineThatStagesAnUpgrade() {
        mac.install("2004", "enabled");
        mac.activate("a");
        mac.heard();
        EXPECT_EQ(machine().answerReplacement("client", "a", true), done);
        EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled", "2105 staging"));
    }
};

TEST_F(AMachineThatStagesAnUpgrade, EnablesItWhenItComesBack) {
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AMachineThatStagesAnUpgrade, DropsItWhereItIsForbiddenSince) {
    mac.forbid();
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 10"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AMachineThatStagesAnUpgrade, DropsWhatIsForbiddenSinceWhenItComesBack) {
    mac.forbid();
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AMachine, EndsARemovalThatItHadBegunWhenItComesBack) {
    mac.set("authorization", "granted");
    mac.install("1", "enabled");
    mac.submit("a", RequestKind::deactivation);
    mac.steps(1);
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("1 terminated waiting to uninstall on reboot"));
}

TEST_F(AMachine, DiesInTheMiddleOfARequestWhereThatWasOrdered) {
    Fault fault;
    fault.kind = Fault::Kind::crash;
    mac.mustDo(machine().orderFault(fault));
    mac.submit("a", RequestKind::properties);
    mac.steps(1);
    const Outbox outbox = machine().takeOutbox();
    EXPECT_TRUE(outbox.crashed);
    EXPECT_THAT(outbox.answers, IsEmpty());
    EXPECT_THAT(machine().state().faults, IsEmpty());
}

// What it says and knows ---------------------------------------------------------------------------------------------

constexpr auto whatHappened = R"(0  switch authorization granted
0 com.kelvra.ip-camera.cmio 0.0/2004: activated enabled
0 com.kelvra.ip-camera.cmio activation submitted
0 com.kelvra.ip-camera.cmio 2.1/2105: validating
0 com.kelvra.ip-camera.cmio activation asked for replacement
0 com.kelvra.ip-camera.cmio 2.1/2105: validating -> staging
0 com.kelvra.ip-camera.cmio 0.0/2004: activated enabled -> terminating for upgrade via delegate
0 com.kelvra.ip-camera.cmio 0.0/2004: terminating for upgrade via delegate -> terminated waiting to uninstall on reboot
0 com.kelvra.ip-camera.cmio 2.1/2105: staging -> activated enabled
0 com.kelvra.ip-camera.cmio activation finished 0
1500  clock 1500 ms
1500 com.kelvra.ip-camera.cmio deactivation submitted
1500 com.kelvra.ip-camera.cmio 2.1/2105: activated enabled -> terminating for uninstall
1500 com.kelvra.ip-camera.cmio deactivation finished 0
1500 com.kelvra.ip-camera.cmio 2.1/2105: terminating for uninstall -> terminated waiting to uninstall on reboot
1500 com.kelvra.ip-camera.cmio properties submitted
1500 com.kelvra.ip-camera.cmio properties found 2
1500 com.kelvra.ip-camera.cmio 0.0/2004: terminated waiting to uninstall on reboot -> gone
1500 com.kelvra.ip-camera.cmio 2.1/2105: terminated waiting to uninstall on reboot -> gone
1500  restart
)";

TEST_F(AMachine, TellsWhoWatchesWhatHappens) {
    mac.set("authorization", "granted");
    mac.install("2004", "enabled");
    mac.activate("a");
    mac.answer("a", true);
    mac.mustDo(machine().advance(1500));
    mac.deactivate("b");
    mac.properties("c");
    machine().restart();
    std::string lines;
    for (const Event& event : mac.takeOutbox().events)
        lines += std::to_string(event.time) + " " + event.identifier + " " + event.text + "\n";
    EXPECT_EQ(lines, whatHappened);
}

TEST_F(AMachine, TellsOfItsSettingsFaultsAndPeopleToo) {
    machine().setDeveloperMode(true);
    machine().setDeveloperMode(false);
    mac.bring({});
    mac.mustDo(machine().setApplicationsFolders({"/Applications"}));
    mac.activate("a");
    mac.mustDo(machine().deny(camera));
    Fault fault;
    fault.kind = Fault::Kind::hollow;
    mac.mustDo(machine().orderFault(fault));
    machine().reset();
    std::string lines;
    for (const Event& event : mac.takeOutbox().events)
        lines += event.text + ", ";
    EXPECT_EQ(lines, "developer mode on, developer mode off, profile changed, Applications folders changed, "
                     "activation submitted, 2.1/2105: validating, 2.1/2105: validating -> staging, "
                     "2.1/2105: staging -> activated waiting for user, activation needs approval, "
                     "2.1/2105: activated waiting for user -> gone, activation failed 11, "
                     "fault ordered: hollow, reset, ");
}

TEST_F(AMachine, TakesTeamNameAndOwnerOfAnInstalledCopyFromTheBundle) {
    mac.install("1", "enabled");
    const Copy& copy = machine().state().copies.begin()->second;
    EXPECT_EQ(copy.extension, (Extension{sampleTeam, camera, "Camera", Category::camera, "com.kelvra.driver-manager"}));
    EXPECT_EQ(copy.application, "");
}

TEST_F(AMachine, RemembersWhichBundleBroughtACopy) {
    mac.activate("a");
    EXPECT_EQ(machine().state().copies.begin()->second.application, sampleApplication);
}

TEST_F(AMachine, KnowsAnExtensionWhoseCopyAndBundleAreGone) {
    mac.install("1", "uninstalling");
    machine().restart();
    mac.disk().remove(sampleApplication);
    EXPECT_TRUE(knows(camera));
    EXPECT_FALSE(knows(driver));
    machine().reset();
    EXPECT_FALSE(knows(camera));
}

TEST_F(AMachine, KnowsTheExtensionsOfEveryBundleThatAsked) {
    BundleOnDisk bundle = sampleBundle();
    bundle.path = "/Downloads/Other.app";
    bundle.extensions[0].identifier = "com.example.downloaded";
    mac.disk().put(bundle);
    EXPECT_FALSE(knows("com.example.downloaded"));
    mac.submit({"client", "a", bundle.path, RequestKind::properties, camera});
    EXPECT_THAT(machine().identifiers(), ElementsAre("com.example.downloaded", driver, camera));
}

TEST_F(AMachine, NeverGivesANumberTwice) {
    mac.install("1", "uninstalling");
    mac.activate("a");
    machine().restart();
    mac.install("2", "uninstalling");
    EXPECT_THAT(machine().state().copies, SizeIs(2));
    EXPECT_EQ(machine().state().copies.rbegin()->first, 4);
}

TEST_F(AMachine, ForgetsASwitchThatIsBackAtItsDefault) {
    mac.set("denial", "silence");
    EXPECT_EQ(machine().state().settings.valueOf(Switch::denial), "silence");
    mac.set("denial", "error");
    EXPECT_EQ(machine().state().settings, Settings{});
}

// What it refuses ----------------------------------------------------------------------------------------------------

TEST_F(AMachine, RefusesAMalformedSubmission) {
    const auto submit = [&](const std::string& token, const std::string& identifier) {
        return textOf(machine().submit({"client", token, sampleApplication, RequestKind::activation, identifier}));
    };
    const std::string badToken = "invalid argument: the token is malformed";
    const std::string badIdentifier = "invalid argument: the identifier is malformed";
    EXPECT_EQ(submit("", camera), badToken);
    EXPECT_EQ(submit("a\nb", camera), badToken);
    EXPECT_EQ(submit("a\x7f", camera), badToken);
    EXPECT_EQ(submit(std::string(129, 'a'), camera), badToken);
    EXPECT_EQ(submit("a", std::string(256, 'a')), badIdentifier);
    EXPECT_EQ(submit("a", "a\tb"), badIdentifier);
    EXPECT_THAT(machine().requests(), IsEmpty());
    EXPECT_EQ(submit(std::string(128, 'a'), std::string(255, 'a')), "done");
    EXPECT_EQ(submit(" ", ""), "done");
}

TEST_F(AMachine, RefusesATokenThatNamesAnOpenRequestOfThatClient) {
    mac.activate("a");
    EXPECT_EQ(textOf(machine().submit({"client", "a", "", RequestKind::properties, camera})),
              "invalid argument: the token names an open request");
    mac.submit({"other", "a", "", RequestKind::properties, camera});
    mac.mustDo(machine().allow(camera));
    mac.submit("a", RequestKind::properties);
}

TEST_F(AMachine, RefusesAFloodOfOneClientAndServesTheOthers) {
    for (int i = 0; i < 256; ++i)
        mac.submit({"flood", std::to_string(i), "", RequestKind::properties, camera});
    EXPECT_EQ(textOf(machine().submit({"flood", "more", "", RequestKind::properties, camera})),
              "limit exceeded: too many requests are open");
    mac.properties("a");
    EXPECT_EQ(mac.heard().back(), "a: found none");
}

TEST_F(AMachine, RefusesMoreRequestsThanItKeeps) {
    for (int i = 0; i < 4096; ++i)
        mac.submit({"client" + std::to_string(i / 256), std::to_string(i), "", RequestKind::properties, camera});
    EXPECT_EQ(textOf(machine().submit({"another", "a", "", RequestKind::properties, camera})),
              "limit exceeded: too many requests are open");
}

TEST_F(AMachine, RefusesMoreFaultsThanItKeeps) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(machine().orderFault({}), done);
    EXPECT_EQ(textOf(machine().orderFault({})), "limit exceeded: too many faults are ordered");
}

TEST_F(AMachine, RefusesMoreCopiesThanItKeeps) {
    for (int i = 0; i < 20000; ++i)
        ASSERT_EQ(machine().install(camera, {"1", "1"}, "uninstalling"), done);
    EXPECT_EQ(textOf(machine().install(camera, {"1", "1"}, "uninstalling")),
              "limit exceeded: too many copies are installed");
}

TEST_F(AMachine, TakesAnAnswerOnlyFromTheClientThatWasAskedAndWhileItIs) {
    const std::string none = "invalid argument: no such question is open";
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), none);
    mac.install("2004", "enabled");
    mac.activate("a");
    EXPECT_EQ(textOf(machine().answerReplacement("other", "a", true)), none);
    EXPECT_EQ(textOf(machine().answerReplacement("client", "b", true)), none);
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), "done");
    EXPECT_EQ(textOf(machine().answerReplacement("client", "a", true)), none);
}

TEST_F(AMachine, TakesNoFaultThatCannotBefall) {
    const auto order = [&](Fault::Kind kind, std::optional<RequestKind> request, std::int64_t milliseconds) {
        return textOf(machine().orderFault({kind, request, {}, milliseconds}));
    };
    const std::string none = "invalid argument: such a request has no such fault";
    EXPECT_EQ(order(Fault::Kind::noprompt, RequestKind::properties, 0), none);
    EXPECT_EQ(order(Fault::Kind::noprompt, RequestKind::deactivation, 0), none);
    EXPECT_EQ(order(Fault::Kind::hollow, RequestKind::properties, 0), none);
    EXPECT_EQ(order(Fault::Kind::hollow, RequestKind::deactivation, 0), "done");
    EXPECT_EQ(order(Fault::Kind::delay, {}, -1), "invalid argument: a delay cannot be negative");
    EXPECT_EQ(order(Fault::Kind::delay, {}, 31622400000001), "invalid argument: the delay is too long");
    EXPECT_EQ(order(Fault::Kind::delay, {}, 31622400000000), "done");
}

TEST_F(AMachine, TakesNoErrorThatIsMalformed) {
    const auto order = [&](const std::string& domain, const std::string& description) {
        Fault fault;
        fault.failure = {domain, 1, description};
        return textOf(machine().orderFault(fault));
    };
    const std::string malformed = "invalid argument: the error is malformed";
    EXPECT_EQ(order("a\n", ""), malformed);
    EXPECT_EQ(order(std::string(256, 'a'), ""), malformed);
    EXPECT_EQ(order("", std::string(65537, 'a')), malformed);
    EXPECT_EQ(order(std::string(255, 'a'), std::string(65536, '\n')), "done");
}

TEST_F(AMachine, LetsTimePassOnlyForwardsAndNotForEver) {
    mac.mustDo(machine().advance(5));
    EXPECT_EQ(textOf(machine().advance(-1)), "invalid argument: time cannot go back");
    EXPECT_EQ(textOf(machine().advance(31622399999996)), "invalid argument: that is too far in the future");
    EXPECT_EQ(textOf(machine().advance(31622399999995)), "done");
    EXPECT_EQ(machine().state().clock, 31622400000000);
}

TEST_F(AMachine, TakesOnlyAbsoluteApplicationsFolders) {
    const auto set = [&](const std::vector<std::string>& folders) {
        return textOf(machine().setApplicationsFolders(folders));
    };
    EXPECT_EQ(set({"/a", "relative"}), "invalid argument: 'relative' is not an absolute path");
    EXPECT_EQ(set({""}), "invalid argument: '' is not an absolute path");
    EXPECT_EQ(set({"/a\n"}), "invalid argument: '/a\n' is not an absolute path");
    EXPECT_EQ(set({"/" + std::string(4096, 'a')}).substr(0, 17), "invalid argument:");
    EXPECT_EQ(set(std::vector<std::string>(65, "/a")), "limit exceeded: too many Applications folders");
    EXPECT_EQ(machine().state().settings, Settings{});
    EXPECT_EQ(set(std::vector<std::string>(64, "/" + std::string(4095, 'a'))), "done");
}

TEST_F(AMachine, TakesNoProfileThatIsTooLongOrMalformed) {
    EXPECT_EQ(textOf(machine().setProfile(std::string(1048577, 'x'))), "invalid argument: the profile is too long");
    mac.forbid();
    EXPECT_EQ(textOf(machine().setProfile("nonsense")), "invalid argument: the profile is malformed");
    EXPECT_FALSE(machine().state().settings.profile.allowsUserOverrides);
}

TEST_F(AMachine, InstallsNoVersionThatIsTooLongOrMalformed) {
    const auto install = [&](const std::string& shortVersion, const std::string& version) {
        return textOf(machine().install(camera, {shortVersion, version}, "enabled"));
    };
    const std::string malformed = "invalid argument: the version is malformed";
    EXPECT_EQ(install("1\n", "1"), malformed);
    EXPECT_EQ(install("1", "1\n"), malformed);
    EXPECT_EQ(install("1", std::string(4097, '1')), malformed);
    EXPECT_EQ(install(std::string(4096, '1'), ""), "done");
    EXPECT_EQ(textOf(machine().install(camera, {"1", "1"}, "preparing")),
              "invalid argument: 'preparing' is not enabled, waiting, disabled or uninstalling");
}

/// Each verb about an extension, where there is nothing that it could do.
TEST_F(AMachine, SaysWhyThereIsNothingToDoToAnExtension) {
    using Verb = Verdict (Machine::*)(const std::string&);
    const std::vector<std::pair<Verb, std::string>> verbs{{&Machine::allow, "nothing waits for approval"},
                                                          {&Machine::deny, "nothing waits for approval"},
                                                          {&Machine::authorize, "no administrator is asked"},
                                                          {&Machine::refuse, "no administrator is asked"},
                                                          {&Machine::disable, "not enabled"},
                                                          {&Machine::enable, "not disabled"}};
    for (const auto& [verb, reason] : verbs) {
        const auto said = [&](const std::string& identifier) { return textOf((machine().*verb)(identifier)); };
        EXPECT_EQ(said(camera), "nothing waiting: com.kelvra.ip-camera.cmio: " + reason);
        EXPECT_EQ(said("com.example.unknown"), "unknown identifier: com.example.unknown: no such extension");
        EXPECT_EQ(said(""), "unknown identifier: : no such extension");
        EXPECT_EQ(said(std::string(256, 'a')), "invalid argument: the identifier is malformed");
    }
}

TEST_F(AMachine, UninstallsSwitchesOffAndSwitchesOnOnlyWhatIsNotSoAlready) {
    EXPECT_EQ(textOf(machine().uninstall("-", camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not installed");
    mac.install("1", "disabled");
    EXPECT_EQ(textOf(machine().disable(camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not enabled");
    mac.mustDo(machine().enable(camera));
    EXPECT_EQ(textOf(machine().enable(camera)), "nothing waiting: com.kelvra.ip-camera.cmio: not disabled");
}

TEST_F(AMachine, EnablesNothingThatTheProfileForbids) {
    mac.install("1", "waiting");
    mac.install("1", "disabled", driver);
    mac.forbid();
    const std::string ofCamera = "forbidden by profile: com.kelvra.ip-camera.cmio: the management profile forbids it";
    EXPECT_EQ(textOf(machine().allow(camera)), ofCamera);
    EXPECT_EQ(textOf(machine().install(camera, {"1", "2"}, "enabled")), ofCamera);
    EXPECT_EQ(textOf(machine().enable(driver)),
              "forbidden by profile: com.kelvra.driverkit.usb-to-poe: the management profile forbids it");
    EXPECT_THAT(machine().state().approvals, SizeIs(1));
}

} // namespace
} // namespace simulator
