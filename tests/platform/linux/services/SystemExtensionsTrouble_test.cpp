#include "SystemExtensionsTest.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::processEventsUntil;
using tests::ScriptedService;

class ASystemExtensionRequestInTrouble : public tests::SystemExtensionsTest {};

// What a service that is not ours, or not in order, says.

TEST_F(ASystemExtensionRequestInTrouble, FailsOnAnAnswerWithWrongArguments) {
    const std::vector<std::pair<QString, QVariantList>> malformed{
        {"ReplacementAsked", {}},
        {"ReplacementAsked", {onTheBus(CopyOnTheBus{})}},
        {"NeedsApproval", {"more"}},
        {"Finished", {}},
        {"Finished", {"zero"}},
        {"Finished", {int{0}}},
        {"Failed", {"domain", qlonglong{1}}},
        {"Failed", {"domain", "code", "text"}},
        {"FoundProperties", {}},
        {"FoundProperties", {onTheBus(CopyOnTheBus{})}},
        {"FoundProperties", {QStringList{"camera"}}},
    };
    startService();
    std::size_t failures = 0;
    for (const auto& [member, arguments] : malformed) {
        submit("camera");
        waitForCalls(failures + 1);
        service->signal(member, QVariantList{service->token(failures)} + arguments);
        waitForAnswers(++failures);
        ASSERT_EQ(delegate->errors.size(), failures) << member.toStdString();
        EXPECT_EQ(delegate->errors.back().domain, OSSystemExtensionErrorDomain);
        EXPECT_EQ(delegate->errors.back().code, 1);
        EXPECT_THAT(delegate->errors.back().localizedDescription,
                    HasSubstr("malformed answer: " + member.toStdString()));
    }
}

TEST_F(ASystemExtensionRequestInTrouble, IsLeftAloneByAnswersWithoutItsToken) {
    submitAccepted();
    service->signal("Finished", {"no such token", qlonglong{0}});
    service->signal("Finished", {"no such token"});
    service->signal("Finished", {""});
    service->signal("Finished", {});
    service->signal("Finished", {qlonglong{1}, service->token(0)});
    service->signal("FoundProperties", {onTheBus(QList<CopyOnTheBus>{})});
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(delegate->heard, IsEmpty());
}

TEST_F(ASystemExtensionRequestInTrouble, IsLeftAloneByASignalThatIsNoAnswer) {
    submitAccepted();
    service->signal("Progress", {service->token(0), qlonglong{50}});
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(delegate->heard, IsEmpty());
}

TEST_F(ASystemExtensionRequestInTrouble, BelievesNobodyButTheOwnerOfTheName) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    stranger.signal(service->client(), "Finished", {service->token(0), qlonglong{0}});
    stranger.broadcast("Finished", {service->token(0), qlonglong{0}});
    stranger.signal(service->client(), "Failed", {service->token(0)});
    stranger.flush();
    waitForAnswerToAnotherRequest();
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    EXPECT_THAT(delegate->heard, ElementsAre("approve for camera"));
}

TEST_F(ASystemExtensionRequestInTrouble, BelievesNobodyButTheBusAboutTheOwnerOfTheName) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    stranger.forgeOwnerChange(service->client(), service->uniqueName(), stranger.uniqueName());
    stranger.signal(service->client(), "Finished", {service->token(0), qlonglong{0}});
    stranger.flush();
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(delegate->heard, IsEmpty());
}

// What may happen to the service and to the bus.

TEST_F(ASystemExtensionRequestInTrouble, FailsLaterAndNotInsideItsSubmissionWhereThereIsNoBus) {
    bus.stop();
    submit("camera");
    EXPECT_THAT(delegate->heard, IsEmpty());
    expectOneFailure("There is no session bus");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereTheAddressOfTheBusIsNone) {
    for (const auto* const address : {"", "nonsense", "unix:path=/nonexistent/bus"}) {
        SimulatorManager elsewhere{address};
        const auto request = OSSystemExtensionRequest::activationRequestForExtension("camera", DispatchQueue::main());
        request->setDelegate(delegate);
        elsewhere.submitRequest(request);
        expectOneFailure("There is no session bus");
        delegate = std::make_shared<tests::RecordingDelegate>();
    }
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereThereIsNoService) {
    submit("camera");
    EXPECT_THAT(delegate->heard, IsEmpty());
    expectOneFailure("The extension service did not take the request");
}

TEST_F(ASystemExtensionRequestInTrouble, StartsTheServiceWhereTheBusKnowsHow) {
    bus.makeActivatable("com.kelvra.Simulator1", ONE_ANSWER_SERVICE);
    submit("camera");
    waitForAnswers(1);
    EXPECT_THAT(delegate->heard, ElementsAre("finished 0 for camera"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereTheServiceDoesNotStart) {
    bus.makeActivatable("com.kelvra.Simulator1", "/bin/false");
    submit("camera");
    expectOneFailure("The extension service did not take the request");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereTheServiceRefusesIt) {
    startService();
    service->setCalls(ScriptedService::Calls::areRefused);
    submit("camera");
    expectOneFailure("too many requests");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceDiesBeforeItTakesIt) {
    startService();
    service->setCalls(ScriptedService::Calls::areLeftOpen);
    submit("camera");
    waitForCalls(1);
    service->die();
    expectOneFailure("The extension service did not take the request");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceDiesBeforeItAnswers) {
    submitAccepted();
    submit("network");
    waitForCalls(2);
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    service->die();
    waitForAnswers(3);
    EXPECT_THAT(delegate->heard, ElementsAre("approve for camera", "failed 1 for camera", "failed 1 for network"));
    EXPECT_THAT(delegate->errors[0].localizedDescription, HasSubstr("went away before it answered"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceGivesItsNameUp) {
    submitAccepted();
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    service->releaseName();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(2);
    EXPECT_THAT(delegate->heard, ElementsAre("approve for camera", "failed 1 for camera"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenItIsTakenByAServiceThatGaveItsNameUp) {
    startService();
    service->setCalls(ScriptedService::Calls::areLeftOpen);
    submit("camera");
    waitForCalls(1);
    service->releaseName();
    service->take(0);
    expectOneFailure("went away before it answered");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceDiesOverAQuestion) {
    startService();
    service->setCalls(ScriptedService::Calls::areLeftOpen);
    submit("camera");
    waitForCalls(1);
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForCalls(2);
    service->die();
    waitForAnswers(2);
    EXPECT_EQ(delegate->heard.back(), "failed 1 for camera");
    EXPECT_EQ(delegate->errors.size(), 1U);
}

TEST_F(ASystemExtensionRequestInTrouble, FailsOnceWhenTheBusGoes) {
    submitAccepted();
    submit("network");
    bus.stop();
    waitForAnswers(2);
    EXPECT_THAT(delegate->heard, ElementsAre("failed 1 for camera", "failed 1 for network"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsOnceWhenTheBusGoesBeforeAnyoneNoticed) {
    submitAccepted();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(1);
    bus.stop();
    submit("network");
    waitForAnswers(2);
    EXPECT_EQ(delegate->heard.back(), "failed 1 for network");
    EXPECT_EQ(delegate->errors.size(), 1U);
}

TEST_F(ASystemExtensionRequestInTrouble, WorksAgainOnceTheServiceIsBack) {
    submitAccepted();
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    service->die();
    waitForAnswers(2);
    startService();
    submit("network");
    waitForCalls(1);
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(3);
    EXPECT_EQ(delegate->heard.back(), "finished 0 for network");
    EXPECT_EQ(service->calls().size(), 1U) << "what failed was asked again";
}

TEST_F(ASystemExtensionRequestInTrouble, OfALaterServiceIsNotAnsweredByAnEarlierOne) {
    submitAccepted();
    service->releaseName();
    waitForAnswers(1);
    ScriptedService later{bus.address()};
    submit("network");
    ASSERT_TRUE(processEventsUntil([&] { return !later.calls().empty(); }));
    service->signal("Finished", {later.token(0), qlonglong{0}});
    later.signal("Finished", {later.token(0), qlonglong{1}});
    waitForAnswers(2);
    EXPECT_EQ(delegate->heard.back(), "finished 1 for network");
}

TEST_F(ASystemExtensionRequestInTrouble, WorksAgainOnceTheBusIsBack) {
    submitAccepted();
    bus.stop();
    waitForAnswers(1);
    submit("camera");
    waitForAnswers(2);
    EXPECT_THAT(delegate->heard, ElementsAre("failed 1 for camera", "failed 1 for camera"));
    service.reset();
    bus.start();
    submitAccepted();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(3);
    EXPECT_EQ(delegate->heard.back(), "finished 0 for camera");
}

} // namespace
} // namespace platform
