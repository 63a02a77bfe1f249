// What no line of a scenario can say: between two steps, in the outbox, and over a stop of the service.

#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;
using testing::SizeIs;

class AMachine : public testing::Test {
protected:
    Machine& machine() { return mac.machine(); }
    bool knows(const std::string& identifier) { return machine().extensions().count(identifier) > 0; }

    SampleMac mac;
};

// From step to step ---------------------------------------------------------------------------------------------------

TEST_F(AMachine, SendsNoAnswerBeforeTheFirstStep) {
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::properties);
    EXPECT_THAT(machine().takeOutbox().answers, IsEmpty());
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

/// A profile arrives after so many steps.
TEST_F(AMachine, FailsAnActivationWithTenAtEveryStageIfTheProfileForbidsIt) {
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
TEST_F(AMachine, ReadsTheBundleAgainWhenItValidates) {
    mac.submit("a", RequestKind::activation);
    mac.steps(1);
    mac.application().mayInstallExtensions = false;
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 2"));
    EXPECT_THAT(mac.copies(), IsEmpty());
}

TEST_F(AMachine, SaysThatARemovalCameToWaitForAnAdministratorAlthoughNoEventTellsOfIt) {
    mac.install("2105", "enabled");
    mac.submit("a", RequestKind::deactivation);
    EXPECT_FALSE(machine().takeOutbox().moved);
    EXPECT_TRUE(machine().step());
    EXPECT_TRUE(machine().takeOutbox().moved);
}

// Clients that leave -------------------------------------------------------------------------------------------------

TEST_F(AMachine, ContinuesAnActivationWithoutItsClientUntilItWaits) {
    mac.submit("a", RequestKind::activation);
    mac.steps(1);
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2105 activated waiting for user"));
    EXPECT_THAT(machine().requests(), IsEmpty());
}

TEST_F(AMachine, AsksNobodyForAClientThatLeft) {
    mac.install("2004", "enabled");
    mac.submit("a", RequestKind::activation);
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
    EXPECT_THAT(machine().requests(), IsEmpty());
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

TEST_F(AMachineInTheMiddle, CompletesItsWorkBeforeARestart) {
    machine().restart();
    EXPECT_TRUE(mac.takeOutbox().restarting);
    expectThatItIsFinished();
}

TEST_F(AMachineInTheMiddle, CompletesItsWorkWhenTheServiceStartsAgain) {
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

TEST_F(AMachineThatStagesAnUpgrade, EnablesItWhenTheServiceStartsAgain) {
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 terminated waiting to uninstall on reboot", "2105 activated enabled"));
}

TEST_F(AMachineThatStagesAnUpgrade, DropsItIfAProfileForbidsItMeanwhile) {
    mac.forbid();
    mac.rest();
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 10"));
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

TEST_F(AMachineThatStagesAnUpgrade, DropsItWhenTheServiceStartsAgainIfAProfileForbidsIt) {
    mac.forbid();
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre("2004 activated enabled"));
}

/// The first step of a removal is done.
class AMachineThatRemoves : public AMachine {
protected:
    AMachineThatRemoves() {
        mac.set("authorization", "granted");
        mac.install("2105", "enabled");
        mac.submit("a", RequestKind::deactivation);
        mac.steps(1);
    }
};

constexpr auto removed = "2105 terminated waiting to uninstall on reboot";

TEST_F(AMachineThatRemoves, ContinuesIfTheRequestIsSuperseded) {
    mac.activate("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 12", "b: needs approval"));
    EXPECT_THAT(mac.copies(), ElementsAre(removed, "2105 activated waiting for user"));
}

TEST_F(AMachineThatRemoves, ContinuesWithoutItsClient) {
    machine().clientLeft("client");
    mac.rest();
    EXPECT_THAT(mac.heard(), IsEmpty());
    EXPECT_THAT(mac.copies(), ElementsAre(removed));
}

TEST_F(AMachineThatRemoves, ContinuesWhenTheServiceStartsAgain) {
    mac.comeBack();
    EXPECT_THAT(mac.copies(), ElementsAre(removed));
}

TEST_F(AMachine, CrashesDuringARequestIfThatWasOrdered) {
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

constexpr auto whatHappened = R"(0  switch authorization: asked -> granted
0 com.kelvra.ip-camera.cmio 0.0/2004: absent -> activated enabled
0 com.kelvra.ip-camera.cmio activation submitted for the application
0 com.kelvra.ip-camera.cmio 2.1/2105: absent -> validating for the application
0 com.kelvra.ip-camera.cmio activation asked for replacement for the application
0 com.kelvra.ip-camera.cmio 2.1/2105: validating -> staging for the application
0 com.kelvra.ip-camera.cmio 0.0/2004: activated enabled -> terminating for upgrade via delegate
0 com.kelvra.ip-camera.cmio 0.0/2004: terminating for upgrade via delegate -> terminated waiting to uninstall on reboot
0 com.kelvra.ip-camera.cmio 2.1/2105: staging -> activated enabled for the application
0 com.kelvra.ip-camera.cmio activation finished 0 for the application
1500  clock: 0.000 s -> 1.500 s
1500 com.kelvra.ip-camera.cmio deactivation submitted for the application
1500 com.kelvra.ip-camera.cmio 2.1/2105: activated enabled -> terminating for uninstall for the application
1500 com.kelvra.ip-camera.cmio deactivation finished 0 for the application
1500 com.kelvra.ip-camera.cmio 2.1/2105: terminating for uninstall -> terminated waiting to uninstall on reboot for the application
1500 com.kelvra.ip-camera.cmio properties submitted for the application
1500 com.kelvra.ip-camera.cmio properties found 2 for the application
1500 com.kelvra.ip-camera.cmio 0.0/2004: terminated waiting to uninstall on reboot -> absent
1500 com.kelvra.ip-camera.cmio 2.1/2105: terminated waiting to uninstall on reboot -> absent for the application
1500  restart: every application ends
)";

TEST_F(AMachine, ReportsEachChangeOfACopyAndRequestAsAnEvent) {
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
        lines += std::to_string(event.time) + " " + event.identifier + " " + event.text +
                 (event.application == sampleApplication ? " for the application\n" : "\n");
    EXPECT_EQ(lines, whatHappened);
}

TEST_F(AMachine, ReportsSettingsFaultsAndTheUsersActionsAsEvents) {
    machine().setDeveloperMode(true);
    machine().setDeveloperMode(false);
    mac.bring({});
    mac.mustDo(machine().setApplicationsFolders({"/Applications"}));
    mac.activate("a");
    mac.mustDo(machine().deny(camera));
    Fault fault;
    fault.kind = Fault::Kind::hollow;
    mac.mustDo(machine().orderFault(fault));
    machine().clearFaults();
    mac.mustDo(machine().orderFault({Fault::Kind::error, RequestKind::activation, failureWith(8, {}), 0}));
    mac.activate("b");
    machine().reset();
    std::string lines;
    for (const Event& event : mac.takeOutbox().events)
        lines += event.text + ", ";
    EXPECT_EQ(lines, "developer mode: on, developer mode: off, management profile installed, "
                     "Applications folders: /Applications, activation submitted, 2.1/2105: absent -> validating, "
                     "2.1/2105: validating -> staging, 2.1/2105: staging -> activated waiting for user, "
                     "activation needs approval, 2.1/2105: activated waiting for user -> absent, activation failed 11, "
                     "fault ordered: next any hollow, faults cleared: 1, fault ordered: next activate 8, "
                     "activation submitted, fault used up: activate 8, activation failed 8, "
                     "reset: every copy, approval, request, and fault is removed, ");
}

TEST_F(AMachine, TakesTeamNameAndOwnerOfAnInstalledCopyFromTheBundle) {
    mac.install("1", "enabled");
    const Copy& copy = machine().state().copies.begin()->second;
    EXPECT_EQ(copy.extension, (Extension{sampleTeam, camera, "Camera", Category::camera, "com.kelvra.driver-manager"}));
    EXPECT_EQ(copy.application, "");
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
    EXPECT_THAT(machine().extensions(), ElementsAre(Key("com.example.downloaded"), Key(driver), Key(camera)));
}

TEST_F(AMachine, NeverGivesANumberTwice) {
    mac.install("1", "uninstalling");
    mac.activate("a");
    machine().restart();
    mac.install("2", "uninstalling");
    EXPECT_THAT(machine().state().copies, SizeIs(2));
    EXPECT_EQ(machine().state().copies.rbegin()->first, 4);
}

TEST_F(AMachine, DoesNotStoreASwitchThatIsAtItsDefault) {
    mac.set("denial", "silence");
    EXPECT_EQ(machine().state().settings.valueOf(Switch::denial), "silence");
    mac.set("denial", "error");
    EXPECT_EQ(machine().state().settings, Settings{});
}

} // namespace
} // namespace simulator
