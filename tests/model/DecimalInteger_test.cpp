#include "model/DecimalInteger.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace model {
namespace {

constexpr std::size_t megabyte = 1'048'576;

using namespace std::string_view_literals;

TEST(ADecimalInteger, IsDigitsInBaseTenAfterAtMostOneSign) {
    constexpr std::pair<std::string_view, std::int64_t> integers[]{
        {"0", 0},
        {"2105", 2105},
        {"007", 7},
        {"-007", -7},
        {"00000000000000000000000000009223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"+7", 7},
        {"-7", -7},
        {"+0", 0},
        {"-0", 0},
        {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"+9223372036854775807", std::numeric_limits<std::int64_t>::max()},
        {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()},
    };
    for (const auto& [text, integer] : integers)
        EXPECT_EQ(decimalInteger(text), integer) << text;
}

TEST(ADecimalInteger, IsNothingElse) {
    for (const std::string_view text :
         {""sv,     "+"sv,      "-"sv,      "+-5"sv,    "-+5"sv,     "++5"sv,     "--5"sv,     "+ 5"sv, "5+"sv,
          "5-"sv,   "2.1.5"sv,  "1.0"sv,    "1."sv,     ".1"sv,      " 1"sv,      "1 "sv,      "\t1"sv, "1\n"sv,
          "1a"sv,   "a1"sv,     "0x10"sv,   "1e3"sv,    "1,000"sv,   "1'000"sv,   "1_000"sv,   "inf"sv, "nan"sv,
          "\xFF"sv, "\u0663"sv, "\uFF11"sv, "\u00B2"sv, "1\u0663"sv, "\u22121"sv, "\u00A01"sv, "1\0"sv, "1\0002"sv})
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
}

TEST(ADecimalInteger, DoesNotGoBeyondItsRange) {
    for (const std::string_view text : {"9223372036854775808", "+9223372036854775808", "-9223372036854775809",
                                        "18446744073709551616", "18446744073709551658", "99999999999999999999999"})
        EXPECT_EQ(decimalInteger(text), std::nullopt) << text;
}

TEST(ADecimalInteger, IsReadFromAMegabyteOfText) {
    EXPECT_EQ(decimalInteger(std::string(megabyte, '0') + "7"), 7);
    EXPECT_EQ(decimalInteger(std::string(megabyte, '9')), std::nullopt);
    EXPECT_EQ(decimalInteger("-" + std::string(megabyte, '1')), std::nullopt);
    EXPECT_EQ(decimalInteger(std::string(megabyte, 'x')), std::nullopt);
}

} // namespace
} // namespace model
