#include "tests/model/ModelTest.h"

namespace model {
namespace {

using platform::fake::copyOf;
using platform::fake::enabledCopy;
using testing::ElementsAre;
using testing::IsEmpty;

class AModelThatIsGone : public ModelTest {
protected:
    AModelThatIsGone() {
        model->enumerate();
        model->activateExt(camera);
        model->deactivateExt(network);
        platform::fake::resetLog();
    }
};

class AModelThatGoes : public ModelTest {};

TEST_F(AModelThatIsGone, IgnoresEveryLaterAnswer) {
    model.reset();
    const auto before = service().submissions();
    service().foundProperties(0, {enabledCopy(base, "2.1", "2105")});
    service().foundProperties(1, {});
    service().fail(2, 1, "Lost.");
    service().askReplacement(3, copyOf(camera, "1", "1"), copyOf(camera, "2", "2"));
    service().needsApproval(3);
    service().finish(3, Result::willCompleteAfterReboot);
    service().finish(4, Result::completed);
    deliver();
    EXPECT_THAT(platform::fake::printedLines(), IsEmpty());
    EXPECT_THAT(platform::fake::loggedLines(), IsEmpty());
    EXPECT_EQ(service().submissions(), before);
}

TEST_F(AModelThatIsGone, LeavesTheAnswersOfItsSuccessor) {
    model = DriverLoadingViewModel::create();
    model->enumerate();
    service().foundProperties(1, {enabledCopy(camera, "1", "1")});
    service().foundProperties(service().latest(Kind::properties, camera), {enabledCopy(camera, "2.1", "2105")});
    deliver();
    EXPECT_THAT(platform::fake::printedLines(),
                ElementsAre("com.kelvra.ip-camera.cmio 2.1/2105 State: Enabled [true false false]"));
}

TEST_F(AModelThatGoes, InsideItsOwnNotificationStillHandlesTheAnswer) {
    model->enumerate();
    const auto subscription = model->objectWillChange().subscribe([this] { model.reset(); });
    service().foundProperties(1, {enabledCopy(camera, "2.1", "2105")});
    deliver();
    EXPECT_EQ(model, nullptr);
    EXPECT_THAT(platform::fake::printedLines(),
                ElementsAre("com.kelvra.ip-camera.cmio 2.1/2105 State: Enabled [true false false]"));
}

} // namespace
} // namespace model
