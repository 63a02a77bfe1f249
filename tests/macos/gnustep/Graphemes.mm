#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <unicode/ubrk.h>

#include <algorithm>
#include <array>
#include <memory>

// GNUstep joins a letter with its marks and nothing else; the system joins all that Unicode makes one character.

namespace {

constexpr NSUInteger farthest = 64; // no character that anyone writes is longer

struct Close {
    void operator()(UBreakIterator* iterator) const { ubrk_close(iterator); }
};

/// Where the character ends that begins at the first of these units.
NSUInteger lengthOfFirst(const UChar* units, const NSUInteger count) {
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, Close> characters{
        ubrk_open(UBRK_CHARACTER, "", units, static_cast<int32_t>(count), &status)};
    return U_SUCCESS(status) ? static_cast<NSUInteger>(ubrk_next(characters.get())) : 1;
}

NSRange composedAt(NSString* self, SEL, const NSUInteger index) {
    std::array<UChar, farthest> units{};
    const NSUInteger count = std::min<NSUInteger>([self length] - index, farthest);
    static_assert(sizeof(unichar) == sizeof(UChar));
    [self getCharacters:reinterpret_cast<unichar*>(units.data()) range:NSMakeRange(index, count)];
    const bool isAscii = units[0] < 0x80 && (count == 1 || units[1] < 0x80);
    return NSMakeRange(index, isAscii ? 1 : lengthOfFirst(units.data(), count));
}

} // namespace

@implementation NSString (Graphemes)

// Each class of texts has its own way.
+ (void)load {
    const SEL selector = @selector(rangeOfComposedCharacterSequenceAtIndex:);
    const char* const types = method_getTypeEncoding(class_getInstanceMethod(self, selector));
    for (const char* name : {"NSString", "GSString", "GSCString", "GSCBufferString", "GSCInlineString",
                             "GSUnicodeString", "GSUnicodeBufferString", "GSUInlineString", "GSMutableString"})
        if (const Class type = objc_getClass(name))
            class_replaceMethod(type, selector, reinterpret_cast<IMP>(composedAt), types);
}

@end
