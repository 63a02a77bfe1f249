#include "model/DecimalInteger.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
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

bool isDigit(const char character) {
    return character >= '0' && character <= '9';
}

/// The definition put the long way round: take the sign off, look at each character, compare the digits with the
/// largest magnitude as text, and only then add up.
std::optional<std::int64_t> restated(const std::string& text) {
    const bool isSigned = !text.empty() && (text.front() == '+' || text.front() == '-');
    const bool negative = isSigned && text.front() == '-';
    auto digits = text.substr(isSigned ? 1 : 0);
    if (digits.empty() || !std::all_of(digits.begin(), digits.end(), isDigit)) return std::nullopt;
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    const std::string largest = negative ? "9223372036854775808" : "9223372036854775807";
    if (digits.size() > largest.size() || (digits.size() == largest.size() && digits > largest)) return std::nullopt;
    std::int64_t value = 0;
    for (const char digit : digits)
        value = value * 10 + (negative ? '0' - digit : digit - '0');
    return value;
}

class RandomTexts {
public:
    /// Few kinds of characters and few of them, so that many texts are integers and many miss it narrowly.
    std::string scattered() {
        static constexpr std::string_view alphabet{"0000112345678999999+-. a\0\xC3\xA9", 27};
        std::string text;
        for (auto length = below(24); length > 0; --length)
            text += alphabet[below(5) == 0 ? below(alphabet.size()) : below(15)];
        return text;
    }

    /// A sign or none, zeros, and an integer near an end of the range.
    std::string nearAnEnd() {
        static constexpr std::string_view signs[]{"", "+", "-", "+-", "-+"};
        auto digits = std::string{"9223372036854775807"};
        digits.back() = static_cast<char>('0' + below(10));
        if (below(3) == 0) digits[below(digits.size())] = static_cast<char>('0' + below(10));
        if (below(4) == 0) digits += static_cast<char>('0' + below(10));
        return std::string{signs[below(5)]} + std::string(below(3), '0') + digits;
    }

    std::int64_t integer() { return static_cast<std::int64_t>(engine_() >> below(64)) * (below(2) == 0 ? 1 : -1); }

private:
    std::size_t below(const std::size_t bound) { return engine_() % bound; }

    std::mt19937_64 engine_{20250607};
};

TEST(RandomTextsOfManyKinds, AreReadAsTheDefinitionSays) {
    RandomTexts texts;
    int integers = 0;
    for (int round = 0; round < 50'000; ++round) {
        const auto text = round % 2 == 0 ? texts.scattered() : texts.nearAnEnd();
        const auto expected = restated(text);
        ASSERT_EQ(decimalInteger(text), expected) << testing::PrintToString(text);
        if (expected) ++integers;
    }
    EXPECT_GT(integers, 5'000);
    EXPECT_LT(integers, 45'000);
}

TEST(RandomIntegers, AreReadBackFromHowTheyAreWritten) {
    RandomTexts texts;
    for (int round = 0; round < 50'000; ++round) {
        const auto value = texts.integer();
        ASSERT_EQ(decimalInteger(std::to_string(value)), value);
        if (value >= 0) {
            ASSERT_EQ(decimalInteger("+" + std::to_string(value)), value);
        }
    }
}

} // namespace
} // namespace model
