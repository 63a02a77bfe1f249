#include "model/DecimalInteger.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace model {
namespace {

constexpr std::size_t megabyte = 1'048'576;

TEST(ADecimalInteger, IsDigitsInBaseTen) {
    EXPECT_EQ(decimalInteger("0"), 0);
    EXPECT_EQ(decimalInteger("42"), 42);
    EXPECT_EQ(decimalInteger("2105"), 2105);
}

TEST(ADecimalInteger, MayBeginWithZeros) {
    EXPECT_EQ(decimalInteger("007"), 7);
    EXPECT_EQ(decimalInteger("-007"), -7);
    EXPECT_EQ(decimalInteger("00000000000000000000000000009223372036854775807"), 9223372036854775807);
}

TEST(ADecimalInteger, MayBeginWithOneSign) {
    EXPECT_EQ(decimalInteger("+7"), 7);
    EXPECT_EQ(decimalInteger("-7"), -7);
    EXPECT_EQ(decimalInteger("+0"), 0);
    EXPECT_EQ(decimalInteger("-0"), 0);
}

TEST(ADecimalInteger, HasAtMostOneSign) {
    for (const std::string_view text : {"+-5", "-+5", "++5", "--5", "+ 5", "5+", "5-"}) {
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
    }
}

TEST(ADecimalInteger, HasAtLeastOneDigit) {
    EXPECT_EQ(decimalInteger(""), std::nullopt);
    EXPECT_EQ(decimalInteger({}), std::nullopt);
    EXPECT_EQ(decimalInteger("+"), std::nullopt);
    EXPECT_EQ(decimalInteger("-"), std::nullopt);
}

TEST(ADecimalInteger, HasNothingBesideDigits) {
    for (const std::string_view text : {"2.1.5", "1.0", "1.", ".1", " 1", "1 ", "\t1", "1\n", "1a", "a1", "0x10", "1e3",
                                        "1,000", "1'000", "1_000", "inf", "nan"}) {
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
    }
}

TEST(ADecimalInteger, HasNoDigitsOfOtherScripts) {
    for (const std::string_view text : {"\u0663", "\uFF11", "1\u0663", "\u00B2",
                                        "\u2212"
                                        "1",
                                        "\u00A0"
                                        "1",
                                        "\xFF"}) {
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
    }
}

TEST(ADecimalInteger, DoesNotEndAtAZeroByte) {
    EXPECT_EQ(decimalInteger(std::string_view{"1\0", 2}), std::nullopt);
    EXPECT_EQ(decimalInteger(std::string_view{"1\0002", 3}), std::nullopt);
}

TEST(ADecimalInteger, ReachesToTheEndsOfItsRange) {
    EXPECT_EQ(decimalInteger("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(decimalInteger("+9223372036854775807"), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(decimalInteger("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
}

TEST(ADecimalInteger, DoesNotGoBeyondItsRange) {
    for (const std::string_view text : {"9223372036854775808", "+9223372036854775808", "-9223372036854775809",
                                        "18446744073709551616", "18446744073709551658", "99999999999999999999999"}) {
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
    }
}

TEST(ADecimalInteger, IsReadFromAMegabyteOfText) {
    EXPECT_EQ(decimalInteger(std::string(megabyte, '0') + "7"), 7);
    EXPECT_EQ(decimalInteger(std::string(megabyte, '9')), std::nullopt);
    EXPECT_EQ(decimalInteger("-" + std::string(megabyte, '1')), std::nullopt);
    EXPECT_EQ(decimalInteger(std::string(megabyte, 'x')), std::nullopt);
}

} // namespace
} // namespace model
