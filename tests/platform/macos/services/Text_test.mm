#include "platform/macos/NativeText.h"
#include "platform/macos/Unicode.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

TEST(ANativeText, KeepsWhatItIsMadeOf) {
    @autoreleasepool {
        EXPECT_EQ(textOf(toNSString("a\U0001F600\u00E9")), "a\U0001F600\u00E9");
        EXPECT_EQ([toNSString("a\U0001F600") length], 3U);
    }
}

TEST(ANativeText, IsNeverNil) {
    @autoreleasepool {
        EXPECT_NE(toNSString(""), nil);
        EXPECT_EQ(textOf(toNSString("\xFF")), "\uFFFD");
    }
}

TEST(ANativeText, IsReadFromANumberToo) {
    EXPECT_EQ(textOf(@2105), "2105");
}

TEST(ANativeText, IsEmptyWhereThereIsNone) {
    EXPECT_EQ(textOf(nil), "");
    EXPECT_EQ(textOf([NSNull null]), "");
    EXPECT_EQ(textOf(@[]), "");
}

TEST(AText, IsTheSameAfterItWasThereAndBack) {
    for (const std::string text : {"", "a", "\u00E9", "\u5B57", "\U0001F600", "a\u00E9\u5B57\U0001F600z"})
        EXPECT_EQ(utf8Of(utf16Of(text)), text);
    EXPECT_EQ(utf16Of("a\U0001F600"), u"a\U0001F600");
}

TEST(AText, GoesOnAfterAZero) {
    using namespace std::string_view_literals;
    EXPECT_EQ(utf16Of("a\0b"sv), u"a\0b"sv);
    EXPECT_EQ(utf8Of(u"a\0b"sv), "a\0b"sv);
}

TEST(AText, HasAReplacementForEachByteThatIsNoUtf8) {
    EXPECT_EQ(utf16Of("a\xFF\xFEz"), u"a\uFFFD\uFFFDz");
    EXPECT_EQ(utf16Of("\xC0\xAF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(utf16Of("\xE2\x82z"), u"\uFFFD\uFFFDz");
    EXPECT_EQ(utf16Of("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(utf16Of("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(AText, HasAReplacementForEachHalfOfAPairThatStandsAlone) {
    const std::u16string high{0xD83D};
    const std::u16string low{0xDE00};
    EXPECT_EQ(utf8Of(high), "\uFFFD");
    EXPECT_EQ(utf8Of(low), "\uFFFD");
    EXPECT_EQ(utf8Of(low + high), "\uFFFD\uFFFD");
    EXPECT_EQ(utf8Of(high + u"a"), "\uFFFDa");
    EXPECT_EQ(utf8Of(high + low), "\U0001F600");
}

} // namespace
} // namespace platform
