#include "platform/Log.h"

namespace platform {
namespace {

TEST(ALogLine, TakesItsArgumentsInOrder) {
    EXPECT_EQ(composeLogLine("%@ then %d.", {"one", "-2"}), "one then -2.");
}

TEST(ALogLine, IsUnchangedWithoutArguments) {
    EXPECT_EQ(composeLogLine("100 % sure of %@.", {}), "100 % sure of %@.");
}

TEST(ALogLine, NeverReadsAnArgumentAsAFormat) {
    EXPECT_EQ(composeLogLine("%@ (%@)", {"%@ %d %s", "x"}), "%@ %d %s (x)");
}

} // namespace
} // namespace platform
