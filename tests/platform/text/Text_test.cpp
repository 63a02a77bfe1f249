#include "platform/Text.h"

#include <ostream>
#include <string>
#include <string_view>

// Tests for every system's implementation of Text. Each is linked in turn.

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

TEST(ATrimmedText, LosesBytesThatAreNotUtf8) {
    for (const std::string lost : {"\x80", "\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
        EXPECT_EQ(trimmedToAlphanumerics(lost + "a1" + lost), "a1");
}

TEST(ATrimmedText, KeepsWhatIsInside) {
    EXPECT_EQ(trimmedToAlphanumerics("(a - \xFF\U0001F600 b)"), "a - \xFF\U0001F600 b");
}

TEST(ATrimmedText, ContinuesAfterAZeroByte) {
    using namespace std::string_view_literals;
    EXPECT_EQ(trimmedToAlphanumerics("\0a\0b\0"sv), "a\0b"sv);
}

TEST(ATrimmedText, IsEmptyWithoutAnAlphanumeric) {
    for (const std::string text : {"", "#", "-\u2026-"})
        EXPECT_EQ(trimmedToAlphanumerics(text), "");
}

struct Counted {
    const char* what;
    std::string_view text;
    std::size_t characters;
};

void PrintTo(const Counted& counted, std::ostream* out) {
    *out << counted.what;
}

constexpr Counted counted[]{
    {"NoText", {}, 0},
    {"PlainLetters", "B6B77E", 6},
    {"ALetterWithItsMark", "e\u0301", 1},
    {"OneOfSeveralLettersWithItsMarks", "abcde\u0301\u0323", 5},
    {"AMarkOfAnotherScriptAfterADigit", "123\u094D", 3},
    {"AFamilyOfEmoji", "\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466", 1},
    {"AnEmojiWithItsSkinTone", "\U0001F44D\U0001F3FD", 1},
    {"TwoFlags", "\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7", 2},
    {"AFlagOfTags", "\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F", 1},
    {"AHangulSyllableOfJamo", "\u1112\u1161\u11AB", 1},
    {"ALineBreakOfTwo", "\r\n", 1},
    {"LineBreaksOfEachKind", "\n\r\r\n\r\n", 4},
    {"ALineBreakAfterAnotherScript", "\u00E9\r\n", 2},
    {"AZeroByte", {"a\0b", 3}, 3},
    {"AZeroByteAfterAnotherScript", {"\u00E9\0b", 4}, 3},
    {"BytesThatAreNoUtf8", "\xFF\xFE", 2},
    {"AContinuationWithoutABeginning", "a\x80z", 3},
    {"ABeginningWithoutAContinuation", "\xC3", 1},
    {"AnOverlongSequence", "\xC0\xAF", 2},
    {"ASurrogate", "\xED\xA0\x80", 3},
    {"ASequenceThatEndsTooEarly", "\xE2\x82z", 3},
    {"ALongSequenceThatEndsTooEarly", "\xF0\x9F\x98", 3},
};

class ACharacterCount : public testing::TestWithParam<Counted> {};

TEST_P(ACharacterCount, IsTheNumberOfUserPerceivedCharacters) {
    EXPECT_EQ(characterCount(GetParam().text), GetParam().characters);
}

INSTANTIATE_TEST_SUITE_P(Of, ACharacterCount, testing::ValuesIn(counted),
                         [](const auto& test) { return std::string{test.param.what}; });

TEST(ALongText, IsCountedWhole) {
    EXPECT_EQ(characterCount(std::string(1'000'000, '7')), 1'000'000U);
}

} // namespace
} // namespace platform
