#include "platform/Text.h"

#include <string>

// One set of guarantees for every system's knowledge of text; each system's services are linked in turn.

namespace platform {
namespace {

std::u32string alphanumericsOf(std::u32string text) {
    std::erase_if(text, [](const char32_t scalar) { return !isAlphanumeric(scalar); });
    return text;
}

std::u32string othersOf(std::u32string text) {
    std::erase_if(text, [](const char32_t scalar) { return isAlphanumeric(scalar); });
    return text;
}

TEST(AnAlphanumeric, IsALetterOfAnyScript) {
    EXPECT_EQ(othersOf(U"aZ\u00E9\u03B1\u0416\u5B57\u05D0\uAC00\U00010400\u02B0"), U"");
}

TEST(AnAlphanumeric, IsANumberOfAnyKind) {
    EXPECT_EQ(othersOf(U"09\u0663\u00B2\u00BD\u2167\u3007"), U"");
}

TEST(AnAlphanumeric, IsACombiningMark) {
    EXPECT_EQ(othersOf(U"\u0301\u20DD\u0903\uFE0F"), U"");
}

TEST(AnAlphanumeric, IsNoPunctuationSymbolOrSpace) {
    EXPECT_EQ(alphanumericsOf(U"#-_ .\t\n\u00A0\u2003\u20AC+\u200D\uFFFD\uFEFF\U0001F600"), U"");
    EXPECT_FALSE(isAlphanumeric(U'\0'));
}

TEST(AnAlphanumeric, IsNothingThatIsNoScalarOfUnicode) {
    EXPECT_FALSE(isAlphanumeric(char32_t{0xD800}));
    EXPECT_FALSE(isAlphanumeric(char32_t{0x110000}));
    EXPECT_FALSE(isAlphanumeric(char32_t{0xFFFFFFFF}));
}

TEST(ACharacterCount, IsZeroForNoText) {
    EXPECT_EQ(characterCount({}), 0U);
}

TEST(ACharacterCount, CountsPlainLetters) {
    EXPECT_EQ(characterCount("B6B77E"), 6U);
}

TEST(ACharacterCount, CountsALetterWithItsMarksOnce) {
    EXPECT_EQ(characterCount("e\u0301"), 1U);
    EXPECT_EQ(characterCount("abcde\u0301\u0323"), 5U);
}

TEST(ACharacterCount, CountsAFamilyOfEmojiOnce) {
    EXPECT_EQ(characterCount("\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466"), 1U);
}

TEST(ACharacterCount, CountsAnEmojiWithItsSkinToneOnce) {
    EXPECT_EQ(characterCount("\U0001F44D\U0001F3FD"), 1U);
}

TEST(ACharacterCount, CountsEachFlagOnce) {
    EXPECT_EQ(characterCount("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7"), 2U);
}

TEST(ACharacterCount, CountsAFlagOfTagsOnce) {
    EXPECT_EQ(characterCount("\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F"), 1U);
}

TEST(ACharacterCount, CountsAHangulSyllableOfJamoOnce) {
    EXPECT_EQ(characterCount("\u1112\u1161\u11AB"), 1U);
}

TEST(ACharacterCount, CountsALineBreakOfTwoOnce) {
    EXPECT_EQ(characterCount("\r\n"), 1U);
}

TEST(ACharacterCount, GoesOnAfterAZeroByte) {
    using namespace std::string_view_literals;
    EXPECT_EQ(characterCount("a\0b"sv), 3U);
}

TEST(ACharacterCount, CountsEachByteThatIsNoUtf8) {
    EXPECT_EQ(characterCount("\xFF\xFE"), 2U);
    EXPECT_EQ(characterCount("a\x80z"), 3U);
    EXPECT_EQ(characterCount("\xC3"), 1U);
    EXPECT_EQ(characterCount("\xC0\xAF"), 2U);
}

TEST(ACharacterCount, CountsASurrogateAsTheBytesThatItIsMadeOf) {
    EXPECT_EQ(characterCount("\xED\xA0\x80"), 3U);
}

TEST(ACharacterCount, CountsEachByteOfASequenceThatEndsTooEarly) {
    EXPECT_EQ(characterCount("\xE2\x82z"), 3U);
    EXPECT_EQ(characterCount("\xF0\x9F\x98"), 3U);
}

TEST(ACharacterCount, HoldsForAMegabyte) {
    EXPECT_EQ(characterCount(std::string(1'000'000, '7')), 1'000'000U);
}

} // namespace
} // namespace platform
