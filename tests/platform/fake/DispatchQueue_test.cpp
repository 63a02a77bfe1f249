#include "tests/support/FakeDispatchQueue.h"

#include "platform/DispatchQueue.h"

#include <string>

namespace platform::fake {
namespace {

class AFakeMainQueue : public testing::Test {
protected:
    void SetUp() override { resetMainQueue(); }

    std::string order;
};

TEST_F(AFakeMainQueue, RunsNothingByItself) {
    DispatchQueue::main().async([this] { order += "a"; });
    EXPECT_EQ(order, "");
    EXPECT_EQ(mainQueueLength(), 1U);
}

TEST_F(AFakeMainQueue, DrainsInOrderWithWhatIsAddedMeanwhile) {
    DispatchQueue::main().async([this] {
        order += "a";
        DispatchQueue::main().async([this] { order += "c"; });
    });
    DispatchQueue::main().async([this] { order += "b"; });
    EXPECT_EQ(drainMainQueue(), 3U);
    EXPECT_EQ(order, "abc");
}

TEST_F(AFakeMainQueue, ForgetsItsWorkOnReset) {
    DispatchQueue::main().async([this] { order += "a"; });
    resetMainQueue();
    EXPECT_EQ(drainMainQueue(), 0U);
    EXPECT_EQ(order, "");
}

} // namespace
} // namespace platform::fake
