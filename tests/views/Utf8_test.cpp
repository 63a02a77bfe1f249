#include "views/Utf8.h"

#include <string>

namespace views {
namespace {

constexpr char32_t replacement = 0xFFFD;

TEST(AScalar, IsReadFromEitherEndOfAText) {
    const std::string text = "a\u00E9\u20AC\U0001F3A8";
    EXPECT_EQ(firstScalar(text).value, U'a');
    EXPECT_EQ(lastScalar(text).value, U'\U0001F3A8');
    EXPECT_EQ(lastScalar(text).length, 4u);
}

TEST(AScalar, TakesAsManyBytesAsItsSequence) {
    EXPECT_EQ(firstScalar("\u00E9x").length, 2u);
    EXPECT_EQ(firstScalar("\u20ACx").length, 3u);
}

TEST(AScalar, IsAReplacementOfOneByteWhereTheBytesAreNoText) {
    for (const std::string bytes :
         {"\x80", "\xFF", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x28"}) {
        EXPECT_EQ(firstScalar(bytes).value, replacement);
        EXPECT_EQ(firstScalar(bytes).length, 1u);
    }
}

TEST(AScalar, IsAReplacementOfOneByteAtTheEndToo) {
    EXPECT_EQ(lastScalar("a\x80").value, replacement);
    EXPECT_EQ(lastScalar("a\xC3").length, 1u);
}

TEST(AScalar, MayBeTheReplacementCharacterItself) {
    EXPECT_EQ(lastScalar("a\uFFFD").value, replacement);
    EXPECT_EQ(lastScalar("a\uFFFD").length, 3u);
}

} // namespace
} // namespace views
