#include "platform/macos/NativeText.h"

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

} // namespace
} // namespace platform
