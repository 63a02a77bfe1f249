#include "platform/macos/BundleReader.h"

#include "platform/macos/NativeText.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <utility>

namespace platform {

namespace {

/// A number stays a number: only what is written as text is one.
InfoValue valueOf(const id object) {
    if ([object isKindOfClass:[NSString class]]) return textOf(object);
    return std::nullopt;
}

std::shared_ptr<const InfoDictionary> dictionaryOf(NSDictionary* const info) {
    InfoDictionary dictionary;
    for (id key in info)
        if ([key isKindOfClass:[NSString class]]) dictionary.emplace(textOf(key), valueOf([info objectForKey:key]));
    return std::make_shared<const InfoDictionary>(std::move(dictionary));
}

} // namespace

NSBundle readBundle(const Native bundle) {
    @autoreleasepool {
        auto* const native = static_cast<::NSBundle*>(bundle);
        const std::string infoFile = textOf([native bundlePath]) + "/Contents/Info.plist";
        const std::string resourcePath = textOf([native resourcePath]);
        NSDictionary* const info = [native infoDictionary];
        // The system does not say why it has none.
        if ([info count] == 0) return {infoFile, nullptr, "it is missing, or no property list", resourcePath};
        return {infoFile, dictionaryOf(info), {}, resourcePath};
    }
}

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle bundle = readBundle([::NSBundle mainBundle]);
    return bundle;
}

} // namespace platform
