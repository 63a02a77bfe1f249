#include "simulator/scenario/Duration.h"

namespace simulator::scenario {
namespace {

TEST(ALengthOfTime, IsReadInEachUnit) {
    EXPECT_EQ(millisecondsOf("250ms"), 250);
    EXPECT_EQ(millisecondsOf("90s"), 90'000);
    EXPECT_EQ(millisecondsOf("5m"), 300'000);
    EXPECT_EQ(millisecondsOf("2h"), 7'200'000);
    EXPECT_EQ(millisecondsOf("7d"), 604'800'000);
}

TEST(ALengthOfTime, IsInSecondsWithoutAUnit) {
    EXPECT_EQ(millisecondsOf("3"), 3'000);
}

TEST(ALengthOfTime, MayHaveAFraction) {
    EXPECT_EQ(millisecondsOf("1.5h"), 5'400'000);
    EXPECT_EQ(millisecondsOf("0.25s"), 250);
}

TEST(ALengthOfTime, IsNothingElse) {
    for (const auto* const text : {"", "s", "-1s", "1.s", ".5s", "1s ", "1 s", "1w", "1.5.5s", "+1", "1e3", "nan"}) {
        EXPECT_EQ(millisecondsOf(text), std::nullopt) << text;
    }
}

TEST(ALengthOfTime, IsNoLongerThanAThousandYears) {
    EXPECT_EQ(millisecondsOf("366000d"), std::int64_t{366'000} * 24 * 3600 * 1000);
    EXPECT_EQ(millisecondsOf("366001d"), std::nullopt);
    EXPECT_EQ(millisecondsOf(std::string(400, '9')), std::nullopt);
}

} // namespace
} // namespace simulator::scenario
