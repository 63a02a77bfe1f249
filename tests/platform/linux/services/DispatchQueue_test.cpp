#include "platform/DispatchQueue.h"

#include "tests/support/QtTesting.h"

#include <string>
#include <thread>

namespace platform {
namespace {

TEST(TheMainQueue, RunsWorkLaterAndInOrder) {
    std::string order;
    DispatchQueue::main().async([&] {
        order += "a";
        DispatchQueue::main().async([&] { order += "c"; });
        order += "a";
    });
    DispatchQueue::main().async([&] { order += "b"; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(tests::until([&] { return order.size() >= 4; }));
    EXPECT_EQ(order, "aabc");
}

TEST(TheMainQueue, RunsOnTheMainThreadWhatAnyThreadAppends) {
    std::thread::id ranOn;
    std::thread{[&] { DispatchQueue::main().async([&] { ranOn = std::this_thread::get_id(); }); }}.join();
    EXPECT_TRUE(tests::until([&] { return ranOn != std::thread::id{}; }));
    EXPECT_EQ(ranOn, std::this_thread::get_id());
}

} // namespace
} // namespace platform
