#include "platform/Text.h"

#include "platform/macos/NativeText.h"
#include "platform/macos/Unicode.h"

#include <algorithm>

namespace platform {

namespace {

bool isLineBreakOfTwo(NSString* const text, const NSUInteger at) {
    return at + 1 < [text length] && [text characterAtIndex:at] == '\r' && [text characterAtIndex:at + 1] == '\n';
}

/// Where the character ends that begins at `at`.
NSUInteger endOfCharacter(NSString* const text, const NSUInteger at) {
    if (isLineBreakOfTwo(text, at)) return at + 2;
    return std::max(at + 1, NSMaxRange([text rangeOfComposedCharacterSequenceAtIndex:at]));
}

} // namespace

std::string_view trimmedToAlphanumerics(const std::string_view text) {
    @autoreleasepool {
        NSCharacterSet* const alphanumerics = [NSCharacterSet alphanumericCharacterSet];
        std::size_t first = text.size();
        std::size_t end = first;
        for (std::size_t at = 0; at < text.size();) {
            const Scalar scalar = firstScalar(text.substr(at));
            const std::size_t next = at + scalar.length;
            if ([alphanumerics longCharacterIsMember:scalar.value]) {
                first = std::min(first, at);
                end = next;
            }
            at = next;
        }
        return text.substr(first, end - first);
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
