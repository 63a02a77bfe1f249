#include "views/HexColor.h"

#include "tests/support/SceneText.h"

#include <iomanip>
#include <optional>
#include <random>
#include <sstream>
#include <string>

namespace views {
namespace {

using platform::ui::Color;

Color onScale(const double red, const double green, const double blue, const double opacity = 255) {
    return {red / 255.0, green / 255.0, blue / 255.0, opacity / 255.0};
}

const Color fallback = onScale(1, 1, 0, 1);

TEST(AHexadecimalColor, IsTheSameWithAHashSignWithoutAndWithSpacesAround) {
    EXPECT_EQ(hexColor("#B6B77E"), onScale(182, 183, 126));
    EXPECT_EQ(hexColor("B6B77E"), onScale(182, 183, 126));
    EXPECT_EQ(hexColor(" \t#B6B77E \n"), onScale(182, 183, 126));
}

TEST(AHexadecimalColor, DoublesEachOfThreeDigits) {
    EXPECT_EQ(hexColor("abc"), onScale(170, 187, 204));
}

TEST(AHexadecimalColor, TakesDigitsOfEitherCase) {
    EXPECT_EQ(hexColor("ABC"), hexColor("abc"));
}

TEST(AHexadecimalColor, ReadsTheOpacityFirstWhereThereAreEightDigits) {
    EXPECT_EQ(hexColor("80FF0000"), onScale(255, 0, 0, 128));
}

TEST(AHexadecimalColor, IsAlmostBlackAndAlmostClearForAnyOtherLength) {
    for (const char* text : {"12345", "1234567", "", "#", "1", "12", "1234", "123456789"})
        EXPECT_EQ(hexColor(text), fallback) << text;
}

TEST(AHexadecimalColor, IsOpaqueBlackForSixCharactersThatAreNoDigits) {
    EXPECT_EQ(hexColor("GGGGGG"), onScale(0, 0, 0));
}

TEST(AHexadecimalColor, CountsAPrefixAndSoReadsItsDigitsAsClear) {
    EXPECT_EQ(hexColor("0x123456"), onScale(0x12, 0x34, 0x56, 0));
    EXPECT_EQ(hexColor("0X123456"), onScale(0x12, 0x34, 0x56, 0));
}

TEST(AHexadecimalColor, StopsAtTheFirstCharacterThatIsNoDigit) {
    EXPECT_EQ(hexColor("12345G"), onScale(0x1, 0x23, 0x45));
}

TEST(AHexadecimalColor, TakesTheDigitsThatThereAreAsTheLowest) {
    EXPECT_EQ(hexColor("F\u00E9F"), onScale(0, 0, 255));
    EXPECT_EQ(hexColor("0xF"), onScale(0, 0, 255));
}

TEST(AHexadecimalColor, KeepsWhatIsNotAlphanumericInside) {
    EXPECT_EQ(hexColor("FF-F00"), onScale(0, 0, 255));
}

TEST(AHexadecimalColor, CountsCharactersAsAPersonSeesThem) {
    EXPECT_EQ(hexColor("abce\u0301f"), fallback) << "five characters of six scalars";
    EXPECT_EQ(hexColor("abce\u0301fa"), onScale(0, 0xab, 0xce)) << "six characters of seven scalars";
}

TEST(AHexadecimalColor, TrimsWhatIsNotAlphanumericInAnyScript) {
    EXPECT_EQ(hexColor("\u2014B6B77E\u2026"), onScale(182, 183, 126));
    EXPECT_EQ(hexColor("\U0001F3A8B6B77E\U0001F3A8"), onScale(182, 183, 126));
}

TEST(AHexadecimalColor, KeepsMarksWhichAreAlphanumeric) {
    EXPECT_EQ(hexColor("B6B77E\u0301"), onScale(182, 183, 126)) << "the mark belongs to the sixth character";
    EXPECT_EQ(hexColor("\u0301B6B77E"), fallback) << "a seventh character that is no digit";
}

TEST(AHexadecimalColor, TakesBytesThatAreNoTextAsSomethingToTrim) {
    EXPECT_EQ(hexColor("\xFF\xC3#B6B77E\x80"), onScale(182, 183, 126));
}

/// The color of an ASCII text, told once more as plainly as possible.
Color restated(const std::string& text) {
    const auto first = text.find_first_of("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    const auto last = text.find_last_of("0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    const std::string trimmed = first == std::string::npos ? "" : text.substr(first, last - first + 1);
    std::istringstream digits{trimmed.substr(0, trimmed.find_first_not_of("0123456789abcdefABCDEF"))};
    if (trimmed.size() > 2 && trimmed[0] == '0' && (trimmed[1] == 'x' || trimmed[1] == 'X'))
        digits.str(trimmed.substr(2, trimmed.find_first_not_of("0123456789abcdefABCDEF", 2) - 2));
    unsigned long long value = 0;
    if (!(digits >> std::hex >> value)) value = 0;
    const auto byte = [&](const unsigned shift) { return static_cast<double>((value >> shift) % 256); };
    const auto digit = [&](const unsigned shift) { return static_cast<double>((value >> shift) % 16 * 17); };
    if (trimmed.size() == 8) return onScale(byte(16), byte(8), byte(0), byte(24));
    if (trimmed.size() == 6) return onScale(byte(16), byte(8), byte(0));
    if (trimmed.size() == 3) return onScale(digit(8), digit(4), digit(0));
    return fallback;
}

TEST(AHexadecimalColor, EqualsAPlainRestatementForAnyAsciiText) {
    std::mt19937 random{20240607};
    const std::string alphabet = "0123456789abcdefABCDEF0123456789abcdefABCDEFxXgZ #-.";
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length)
            text += alphabet[random() % alphabet.size()];
        ASSERT_EQ(hexColor(text), restated(text)) << std::quoted(text);
    }
}

} // namespace
} // namespace views
