#include "platform/Text.h"

#include "platform/macos/NativeText.h"

#include <algorithm>

namespace platform {

namespace {

bool isScalar(const char32_t value) {
    return value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

bool isLineBreakOfTwo(NSString* const text, const NSUInteger at) {
    return at + 1 < [text length] && [text characterAtIndex:at] == '\r' && [text characterAtIndex:at + 1] == '\n';
}

/// Where the character ends that begins at `at`.
NSUInteger endOfCharacter(NSString* const text, const NSUInteger at) {
    if (isLineBreakOfTwo(text, at)) return at + 2;
    return std::max(at + 1, NSMaxRange([text rangeOfComposedCharacterSequenceAtIndex:at]));
}

} // namespace

bool isAlphanumeric(const char32_t scalar) {
    @autoreleasepool {
        return isScalar(scalar) && [[NSCharacterSet alphanumericCharacterSet] longCharacterIsMember:scalar];
    }
}

std::size_t characterCount(const std::string_view text) {
    @autoreleasepool {
        NSString* const string = toNSString(text);
        std::size_t count = 0;
        for (NSUInteger at = 0; at < [string length]; at = endOfCharacter(string, at))
            ++count;
        return count;
    }
}

} // namespace platform
