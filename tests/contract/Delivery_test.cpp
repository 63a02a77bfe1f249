#include "tests/contract/ContractTest.h"

namespace contract {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST_F(TheExtensionService, AnswersNothingInsideASubmission) {
    query("copies");
    activate("first", nobody);
    deactivate("second", nobody);
    EXPECT_THAT(record.lines, IsEmpty());
    EXPECT_THAT(heard(), SizeIs(3));
}

TEST_F(TheExtensionService, AnswersNothingInsideASubmissionFromWithinAnAnswer) {
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
    stage->install(camera, "2.0", "2004", "enabled");
    activate("first", camera);
    activate("second", driver);
    query("copies");
    stage->settle();
    EXPECT_THAT(record.threads, SizeIs(4));
    EXPECT_THAT(record.threads, Each(std::this_thread::get_id()));
}

TEST_F(TheExtensionService, AnswersQuestionsOfOneKindInTheOrderOfTheirSubmission) {
    query("a");
    query("b", driver);
    query("c");
    query("d", nobody);
    EXPECT_THAT(heard(), ElementsAre("a found 0", "b found 0", "c found 0", "d found 0"));
}

TEST_F(TheExtensionService, AnswersInTheOrderInWhichThingsHappen) {
    activate("camera", camera);
    activate("driver", driver);
    stage->settle();
    stage->allow(driver);
    stage->deny(camera);
    EXPECT_THAT(heard(),
                ElementsAre("camera needs approval", "driver needs approval", "driver finished 0", "camera failed 11"));
}

TEST_F(TheExtensionService, GivesEachAnswerTogetherWithItsRequest) {
    const auto cameraRequest = activate("camera", camera);
    const auto driverRequest = activate("driver", driver);
    stage->settle();
    const auto first = cameraRequest.lock();
    const auto second = driverRequest.lock();
    ASSERT_TRUE(first && second);
    stage->allow(driver);
    stage->allow(camera);
    EXPECT_THAT(heard(), ElementsAre("camera needs approval", "driver needs approval", "driver finished 0",
                                     "camera finished 0"));
    EXPECT_THAT(record.requests, ElementsAre(first.get(), second.get(), second.get(), first.get()));
}

} // namespace
} // namespace contract
