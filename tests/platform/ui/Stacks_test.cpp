#include "platform/ui/Stacks.h"

#include "platform/ui/Geometry.h"

#include <algorithm>

namespace platform::ui {
namespace {

using Lengths = std::vector<double>;

StackItem fixed(const double length) {
    return {std::nullopt, [length](std::optional<double>) { return length; }};
}

/// Takes the offered length within its bounds, or its minimum without an offer.
StackItem flexible(const double least, const double most) {
    return {std::nullopt,
            [=](const std::optional<double> offered) { return std::clamp(offered.value_or(least), least, most); }};
}

StackItem spacer() {
    return {8, [](const std::optional<double> offered) { return std::max(8.0, offered.value_or(0)); }};
}

TEST(AStack, SharesItsLengthEquallyAmongFlexibleMembers) {
    EXPECT_EQ(stackLengths({flexible(0, 1000), flexible(0, 1000)}, 100, 0), (Lengths{50, 50}));
}

TEST(AStack, OffersLengthToLessFlexibleMembersFirst) {
    EXPECT_EQ(stackLengths({flexible(0, 1000), fixed(10), flexible(0, 20)}, 100, 0), (Lengths{70, 10, 20}));
    EXPECT_EQ(stackLengths({flexible(0, 100), fixed(80)}, 100, 0), (Lengths{20, 80})) << "however long";
}

TEST(AStack, SubtractsItsSpacingFirst) {
    EXPECT_EQ(stackLengths({flexible(0, 1000), flexible(0, 1000)}, 100, 8), (Lengths{46, 46}));
}

TEST(AStack, ReservesTheMinimumLengthsOfItsSpacers) {
    EXPECT_EQ(stackLengths({spacer(), flexible(0, 1000), spacer()}, 100, 0), (Lengths{8, 84, 8}));
}

TEST(AStack, SharesTheRestAmongItsSpacers) {
    EXPECT_EQ(stackLengths({spacer(), fixed(40), spacer()}, 100, 0), (Lengths{30, 40, 30}));
}

TEST(AStack, NeverMakesASpacerShorterThanItsMinimum) {
    EXPECT_EQ(stackLengths({spacer(), fixed(140), spacer()}, 100, 0), (Lengths{8, 140, 8}));
}

TEST(AStack, NeverOffersANegativeLength) {
    EXPECT_EQ(stackLengths({fixed(140), flexible(5, 1000)}, 100, 0), (Lengths{140, 5}));
}

TEST(AStack, GivesEachMemberItsOwnLengthWithoutAnOffer) {
    EXPECT_EQ(stackLengths({spacer(), flexible(5, 1000), fixed(3)}, std::nullopt, 8), (Lengths{8, 5, 3}));
}

TEST(AStack, StaysFiniteWithTheMaximumLength) {
    const auto lengths =
        stackLengths({fixed(greatestFiniteMagnitude), fixed(greatestFiniteMagnitude), spacer()}, 100, 8);
    EXPECT_EQ(lengths, (Lengths{greatestFiniteMagnitude, greatestFiniteMagnitude, 8}));
}

TEST(AStack, CanBeEmpty) {
    EXPECT_EQ(stackLengths({}, 100, 0), Lengths{});
}

} // namespace
} // namespace platform::ui
