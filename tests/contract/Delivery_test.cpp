#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(TheExtensionService, DoesNotAnswerDuringASubmission) {
    query("copies");
    activate("first", nobody);
    deactivate("second", nobody);
    EXPECT_THAT(record.lines, IsEmpty());
    EXPECT_THAT(heard(), SizeIs(3));
}

TEST_F(TheExtensionService, DoesNotAnswerDuringASubmissionInsideAnAnswer) {
    std::vector<std::string> afterSubmission;
    record.onLine = [&] {
        if (record.lines.size() > 1) return;
        query("second");
        afterSubmission = record.lines;
    };
    query("first");
    EXPECT_THAT(heard(), ElementsAre("first found 0", "second found 0"));
    EXPECT_THAT(afterSubmission, ElementsAre("first found 0"));
}

TEST_F(TheExtensionService, AnswersOnTheMainThread) {
    install(camera, "2.0", "2004");
    activate("first", camera);
    activate("second", driver);
    query("copies");
    stage->settle();
    EXPECT_THAT(record.threads, SizeIs(4));
    EXPECT_THAT(record.threads, Each(std::this_thread::get_id()));
}

TEST_F(TheExtensionService, AnswersPropertiesRequestsInOrder) {
    query("a");
    query("b", driver);
    query("c");
    query("d", nobody);
    EXPECT_THAT(heard(), ElementsAre("a found 0", "b found 0", "c found 0", "d found 0"));
}

TEST_F(TheExtensionService, PassesTheRequestWithEachAnswer) {
    const auto cameraRequest = activate("camera", camera);
    stage->settle(); // two requests may be validated in either order
    const auto driverRequest = activate("driver", driver);
    stage->settle();
    const auto first = cameraRequest.lock();
    const auto second = driverRequest.lock();
    ASSERT_TRUE(first && second);
    act({"allow", driver});
    act({"allow", camera});
    EXPECT_THAT(heard(), ElementsAre("camera needs approval", "driver needs approval", "driver finished 0",
                                     "camera finished 0"));
    EXPECT_THAT(record.requests, ElementsAre(first.get(), second.get(), second.get(), first.get()));
}

// Lifetime of requests and delegates ---------------------------------------------------------------------------------

TEST_F(TheExtensionService, KeepsARequestDuringItsLastAnswerAndNoLonger) {
    std::weak_ptr<OSSystemExtensionRequest> request;
    bool wasThere = false;
    record.onLine = [&] { wasThere = !request.expired(); };
    request = query("copies");
    EXPECT_THAT(heard(), ElementsAre("copies found 0"));
    EXPECT_TRUE(wasThere);
    EXPECT_TRUE(request.expired());
}

TEST_F(TheExtensionService, SendsNothingToADelegateThatIsGone) {
    const auto request = activate("first");
    stage->settle();
    drop("first");
    act({"allow", camera});
    EXPECT_THAT(heard(), ElementsAre("first needs approval"));
    EXPECT_TRUE(request.expired());
    EXPECT_THAT(copies(), ElementsAre("2.1 2105 enabled"));
}

TEST_F(TheExtensionService, SendsNothingToADelegateDestroyedBeforeDelivery) {
    record.onLine = [this] { drop("second"); };
    query("first");
    const auto request = query("second");
    EXPECT_THAT(heard(), ElementsAre("first found 0"));
    EXPECT_TRUE(request.expired());
}

TEST_F(TheExtensionService, ReplacesNothingIfTheDelegateIsGone) {
    install(camera, "2.0", "2004");
    const auto request = activate("first");
    drop("first");
    EXPECT_THAT(heard(), IsEmpty());
    EXPECT_TRUE(request.expired());
    EXPECT_THAT(copies(), ElementsAre("2.0 2004 enabled"));
}

} // namespace
} // namespace contract
