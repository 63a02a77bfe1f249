#include "platform/Log.h"

namespace platform {
namespace {

TEST(ALogLine, TakesTextsAndIntegersInOrder) {
    EXPECT_EQ(composeLogLine("%@ then %d", {std::string_view{"one"}, std::int64_t{-2}}), "one then -2");
}

TEST(ALogLine, StandsAsItIsWithoutPlaceholders) {
    EXPECT_EQ(composeLogLine("100 % sure.", {}), "100 % sure.");
}

TEST(ALogLine, NeverReadsAnArgumentAsAFormat) {
    EXPECT_EQ(composeLogLine("%@ (%@)", {std::string_view{"%@ %d %s"}, std::string_view{"x"}}), "%@ %d %s (x)");
}

TEST(ALogLine, KeepsAPlaceholderThatHasNoArgument) {
    EXPECT_EQ(composeLogLine("%@", {}), "%@");
}

} // namespace
} // namespace platform
