#include "platform/Text.h"

#include <string>

// One set of guarantees for every system's knowledge of text; each system's services are linked in turn.

namespace platform {
namespace {

TEST(ATrimmedText, KeepsTheLettersMarksAndNumbersOfAnyScript) {
    for (const std::string kept : {"a",      "Z",          "\u00E9", "\u03B1", "\u0416", "\u5B57", "\u05D0",
                                   "\uAC00", "\U00010400", "\u02B0",                                         // letters
                                   "0",      "9",          "\u0663", "\u00B2", "\u00BD", "\u2167", "\u3007", // numbers
                                   "\u0301", "\u20DD",     "\u0903", "\uFE0F"})                              // marks
        EXPECT_EQ(trimmedToAlphanumerics("-" + kept + "-"), kept);
}

TEST(ATrimmedText, LosesPunctuationSymbolsAndSpacesAtEitherEnd) {
    for (const std::string lost : {"#", "-", "_", " ", ".", "\t", "\n", "\u00A0", "\u2003", "\u20AC", "+", "\u200D",
                                   "\uFFFD", "\uFEFF", "\U0001F600"})
        EXPECT_EQ(trimmedToAlphanumerics(lost + "a1" + lost), "a1") << lost;
}

TEST(ATrimmedText, LosesBytesThatAreNoUtf8) {
    for (const std::string lost : {"\x80", "\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
        EXPECT_EQ(trimmedToAlphanumerics(lost + "a1" + lost), "a1");
}

TEST(ATrimmedText, KeepsWhatIsInside) {
    EXPECT_EQ(trimmedToAlphanumerics("(a - \xFF\U0001F600 b)"), "a - \xFF\U0001F600 b");
}

TEST(ATrimmedText, GoesOnAfterAZeroByte) {
    using namespace std::string_view_literals;
    EXPECT_EQ(trimmedToAlphanumerics("\0a\0b\0"sv), "a\0b"sv);
}

TEST(ATrimmedText, IsEmptyWithoutAnAlphanumeric) {
    for (const std::string text : {"", "#", "-\u2026-"})
        EXPECT_EQ(trimmedToAlphanumerics(text), "");
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

TEST(ACharacterCount, CountsAMarkOfAnotherScriptWithTheDigitBeforeIt) {
    EXPECT_EQ(characterCount("123\u094D"), 3U);
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
    EXPECT_EQ(characterCount("\n\r\r\n\r\n"), 4U);
    EXPECT_EQ(characterCount("\u00E9\r\n"), 2U);
}

TEST(ACharacterCount, GoesOnAfterAZeroByte) {
    using namespace std::string_view_literals;
    EXPECT_EQ(characterCount("a\0b"sv), 3U);
    EXPECT_EQ(characterCount("\u00E9\0b"sv), 3U);
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
