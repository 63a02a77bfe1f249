#include "platform/macos/NativeText.h"

#include "platform/macos/Unicode.h"

namespace platform {

namespace {

static_assert(sizeof(unichar) == sizeof(char16_t));

std::string contentsOf(NSString* const string) {
    std::u16string units([string length], u'\0');
    [string getCharacters:reinterpret_cast<unichar*>(units.data()) range:NSMakeRange(0, units.size())];
    return utf8Of(std::u16string_view{units});
}

} // namespace

NSString* toNSString(const std::string_view utf8) {
    const std::u16string units = utf16Of(utf8);
    return [NSString stringWithCharacters:reinterpret_cast<const unichar*>(units.data()) length:units.size()];
}

std::string textOf(const id object) {
    if ([object isKindOfClass:[NSString class]]) return contentsOf(static_cast<NSString*>(object));
    if ([object isKindOfClass:[NSNumber class]]) return contentsOf([static_cast<NSNumber*>(object) stringValue]);
    return {};
}

} // namespace platform
