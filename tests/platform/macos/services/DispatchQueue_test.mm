#include "platform/DispatchQueue.h"

#include "tests/platform/macos/services/MainQueue.h"

#import <Foundation/Foundation.h>

#include <memory>
#include <string>

namespace platform {
namespace {

TEST(TheMainQueue, RunsWorkLaterAndInOrder) {
    std::string order;
    DispatchQueue::main().async([&] {
        order += "a";
        DispatchQueue::main().async([&] { order += "c"; });
    });
    DispatchQueue::main().async([&] { order += "b"; });
    EXPECT_EQ(order, "");
    runMainQueue();
    EXPECT_EQ(order, "abc");
}

TEST(TheMainQueue, FreesItsWorkWhenItWasDone) {
    const auto kept = std::make_shared<int>();
    DispatchQueue::main().async([kept] {});
    EXPECT_EQ(kept.use_count(), 2);
    runMainQueue();
    EXPECT_EQ(kept.use_count(), 1);
}

TEST(TheMainQueue, GoesOnAfterWorkThatThrows) {
    bool ran = false;
    DispatchQueue::main().async([] { static_cast<void>(std::string{}.at(1)); });
    DispatchQueue::main().async([] { [NSException raise:NSGenericException format:@"broken"]; });
    DispatchQueue::main().async([&] { ran = true; });
    runMainQueue();
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace platform
