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

class ASystemExtensionRequest : public tests::SystemExtensionsTest {};

TEST_F(ASystemExtensionRequest, ReachesTheServiceWithItsKindAndIdentifier) {
    startService();
    for (const auto& request : {OSSystemExtensionRequest::activationRequestForExtension("a", DispatchQueue::main()),
                                OSSystemExtensionRequest::deactivationRequestForExtension("b", DispatchQueue::main()),
                                OSSystemExtensionRequest::propertiesRequestForExtension("c", DispatchQueue::main())})
        manager.submitRequest(request);
    waitForCalls(3);
    QStringList submitted;
    for (const auto& call : service->calls())
        submitted << call.member() + " " + call.arguments().at(1).toString() + " " + call.arguments().at(2).toString();
    EXPECT_EQ(submitted, (QStringList{"Submit activation a", "Submit deactivation b", "Submit properties c"}));
}

TEST_F(ASystemExtensionRequest, HasATokenOfItsOwn) {
    startService();
    submit("camera");
    submit("camera");
    waitForCalls(2);
    EXPECT_NE(service->token(0), service->token(1));
}

TEST_F(ASystemExtensionRequest, IsToldEveryAnswerInOrder) {
    submitAccepted();
    const auto token = service->token(0);
    service->signal("NeedsApproval", {token});
    service->signal("Finished", {token, qlonglong{1}});
    waitForAnswers(2);
    EXPECT_THAT(delegate->heard, ElementsAre("approve for camera", "finished 1 for camera"));
}

TEST_F(ASystemExtensionRequest, IsToldAnUnknownResultAsItIs) {
    submitAccepted();
    service->signal("Finished", {service->token(0), qlonglong{-7}});
    waitForAnswers(1);
    EXPECT_THAT(delegate->heard, ElementsAre("finished -7 for camera"));
}

TEST_F(ASystemExtensionRequest, IsToldTheErrorOfTheService) {
    submitAccepted();
    service->signal("Failed", {service->token(0), "SomeDomain", qlonglong{12}, "Superseded – überholt"});
    waitForAnswers(1);
    EXPECT_EQ(delegate->errors.at(0).domain, "SomeDomain");
    EXPECT_EQ(delegate->errors.at(0).code, 12);
    EXPECT_EQ(delegate->errors.at(0).localizedDescription, "Superseded – überholt");
}

TEST_F(ASystemExtensionRequest, IsToldEveryCopyInOrder) {
    submitAccepted();
    service->signal("FoundProperties",
                    {service->token(0), onTheBus(QList<CopyOnTheBus>{{"id", "1.0", "10", true, false, false},
                                                                     {"id", "1.1", "11", false, true, false},
                                                                     {"", "", "", false, false, true}})});
    waitForAnswers(1);
    ASSERT_EQ(delegate->found.size(), 3U);
    EXPECT_EQ(delegate->found[0].bundleIdentifier, "id");
    EXPECT_EQ(delegate->found[0].bundleShortVersion, "1.0");
    EXPECT_EQ(delegate->found[0].bundleVersion, "10");
    EXPECT_EQ(delegate->found[0].description, "<id 1.0/10>");
    EXPECT_TRUE(delegate->found[0].isEnabled);
    EXPECT_FALSE(delegate->found[0].isAwaitingUserApproval);
    EXPECT_TRUE(delegate->found[1].isAwaitingUserApproval);
    EXPECT_TRUE(delegate->found[2].isUninstalling);
}

TEST_F(ASystemExtensionRequest, IsToldThatThereIsNoCopy) {
    submitAccepted();
    service->signal("FoundProperties", {service->token(0), onTheBus(QList<CopyOnTheBus>{})});
    waitForAnswers(1);
    EXPECT_THAT(delegate->heard, ElementsAre("found 0 for camera"));
}

TEST_F(ASystemExtensionRequest, TakesTenThousandCopiesAndAMegabyteOfVersion) {
    submitAccepted();
    QList<CopyOnTheBus> copies(10'000, CopyOnTheBus{"id", "1", "1"});
    copies[9'999].version = QString{1'000'000, u'9'};
    service->signal("FoundProperties", {service->token(0), onTheBus(copies)});
    waitForAnswers(1);
    ASSERT_EQ(delegate->found.size(), 10'000U);
    EXPECT_EQ(delegate->found.back().bundleVersion.size(), 1'000'000U);
}

TEST_F(ASystemExtensionRequest, AnswersTheQuestionAboutAReplacement) {
    submitAccepted();
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{"camera", "2.0", "2004"}),
                                         onTheBus(CopyOnTheBus{"camera", "2.1", "2105"})});
    waitForCalls(2);
    EXPECT_THAT(delegate->heard, ElementsAre("replace <camera 2.0/2004> by <camera 2.1/2105> for camera"));
    EXPECT_EQ(service->calls()[1].member(), "AnswerReplacement");
    EXPECT_EQ(service->calls()[1].arguments(), (QVariantList{service->token(0), "replace"}));
}

TEST_F(ASystemExtensionRequest, CancelsAReplacementWhenTheDelegateSaysSo) {
    submitAccepted();
    delegate->action = OSSystemExtensionReplacementAction::cancel;
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForCalls(2);
    EXPECT_EQ(service->calls()[1].arguments().at(1), "cancel");
}

TEST_F(ASystemExtensionRequest, CancelsAReplacementWhenTheDelegateIsGone) {
    submitAccepted();
    delegate.reset();
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForCalls(2);
    EXPECT_EQ(service->calls()[1].arguments().at(1), "cancel");
}

TEST_F(ASystemExtensionRequest, FailsWhenTheServiceRefusesTheAnswerToItsQuestion) {
    submitAccepted();
    service->setCalls(ScriptedService::Calls::areRefused);
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForAnswers(2);
    EXPECT_EQ(delegate->heard.back(), "failed 1 for camera");
    EXPECT_THAT(delegate->errors.at(0).localizedDescription, HasSubstr("too many requests"));
}

TEST_F(ASystemExtensionRequest, AnswersNoQuestionOnceItHasEnded) {
    submitAccepted();
    delegate->onHearing = [this](const std::string& line) {
        if (!testing::Value(line, testing::StartsWith("replace"))) return;
        service->signal("Failed", {service->token(0), "", qlonglong{12}, ""});
        waitForAnswers(2);
    };
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForAnswers(2);
    waitForAnswerToAnotherRequest();
    for (const auto& call : service->calls())
        EXPECT_EQ(call.member(), "Submit");
}

TEST_F(ASystemExtensionRequest, IsKeptUntilItsLastAnswerWasDelivered) {
    const auto request = submitAccepted();
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    EXPECT_FALSE(request.expired());
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(2);
    ASSERT_TRUE(processEventsUntil([&] { return request.expired(); }));
}

TEST_F(ASystemExtensionRequest, IsReleasedAlsoWhenItsDelegateIsGone) {
    const auto request = submitAccepted();
    delegate.reset();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    EXPECT_TRUE(processEventsUntil([&] { return request.expired(); }));
}

TEST_F(ASystemExtensionRequest, HearsNothingAfterItsLastAnswer) {
    submitAccepted();
    const auto token = service->token(0);
    service->signal("Finished", {token, qlonglong{0}});
    service->signal("NeedsApproval", {token});
    service->signal("Failed", {token, "", qlonglong{4}, ""});
    service->signal("FoundProperties", {token, onTheBus(QList<CopyOnTheBus>{})});
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(delegate->heard, ElementsAre("finished 0 for camera"));
}

TEST_F(ASystemExtensionRequest, MayBeFinishedBeforeItsSubmissionIsTaken) {
    startService();
    service->finishBeforeReplying();
    submit("camera");
    waitForAnswers(1);
    waitForCalls(1);
    EXPECT_THAT(delegate->heard, ElementsAre("finished 0 for camera"));
}

TEST_F(ASystemExtensionRequest, MayBeSubmittedFromInsideAnAnswer) {
    submitAccepted();
    delegate->onHearing = [this](const std::string& line) {
        if (line == "finished 0 for camera") submit("next");
    };
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForCalls(2);
    EXPECT_EQ(service->calls()[1].arguments().at(2), "next");
}

TEST_F(ASystemExtensionRequest, ToAServiceThatStopsAnsweringIsDroppedWithItsManager) {
    const auto request = submitAccepted();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    manager.close();
    EXPECT_TRUE(request.expired());
    EXPECT_THAT(delegate->heard, IsEmpty());
}

} // namespace
} // namespace platform
