#include "platform/macos/ExtensionAnswers.h"

#include "platform/macos/NativeText.h"

#import <Foundation/Foundation.h>
#import <SystemExtensions/SystemExtensions.h>

namespace platform {

namespace {

constexpr bool same(const OSSystemExtensionErrorCode ours, const ::OSSystemExtensionErrorCode theirs) {
    return static_cast<NSInteger>(ours) == static_cast<NSInteger>(theirs);
}

static_assert(same(OSSystemExtensionErrorCode::unknown, ::OSSystemExtensionErrorUnknown));
static_assert(same(OSSystemExtensionErrorCode::missingEntitlement, ::OSSystemExtensionErrorMissingEntitlement));
static_assert(same(OSSystemExtensionErrorCode::unsupportedParentBundleLocation,
                   ::OSSystemExtensionErrorUnsupportedParentBundleLocation));
static_assert(same(OSSystemExtensionErrorCode::extensionNotFound, ::OSSystemExtensionErrorExtensionNotFound));
static_assert(same(OSSystemExtensionErrorCode::extensionMissingIdentifier,
                   ::OSSystemExtensionErrorExtensionMissingIdentifier));
static_assert(same(OSSystemExtensionErrorCode::duplicateExtensionIdentifier,
                   ::OSSystemExtensionErrorDuplicateExtensionIdentifer));
static_assert(same(OSSystemExtensionErrorCode::unknownExtensionCategory,
                   ::OSSystemExtensionErrorUnknownExtensionCategory));
static_assert(same(OSSystemExtensionErrorCode::codeSignatureInvalid, ::OSSystemExtensionErrorCodeSignatureInvalid));
static_assert(same(OSSystemExtensionErrorCode::validationFailed, ::OSSystemExtensionErrorValidationFailed));
static_assert(same(OSSystemExtensionErrorCode::forbiddenBySystemPolicy,
                   ::OSSystemExtensionErrorForbiddenBySystemPolicy));
static_assert(same(OSSystemExtensionErrorCode::requestCanceled, ::OSSystemExtensionErrorRequestCanceled));
static_assert(same(OSSystemExtensionErrorCode::requestSuperseded, ::OSSystemExtensionErrorRequestSuperseded));
static_assert(same(OSSystemExtensionErrorCode::authorizationRequired, ::OSSystemExtensionErrorAuthorizationRequired));

bool areProperties(const id object) {
    return [object isKindOfClass:[::OSSystemExtensionProperties class]];
}

} // namespace

OSSystemExtensionProperties propertiesOf(const Native object) {
    const id described = static_cast<id>(object);
    OSSystemExtensionProperties properties;
    properties.description = textOf([described description]);
    if (!areProperties(described)) return properties;
    ::OSSystemExtensionProperties* const native = described;
    properties.bundleIdentifier = textOf([native bundleIdentifier]);
    properties.bundleShortVersion = textOf([native bundleShortVersion]);
    properties.bundleVersion = textOf([native bundleVersion]);
    properties.isEnabled = [native isEnabled];
    properties.isAwaitingUserApproval = [native isAwaitingUserApproval];
    properties.isUninstalling = [native isUninstalling];
    return properties;
}

std::vector<OSSystemExtensionProperties> propertyListOf(const Native array) {
    std::vector<OSSystemExtensionProperties> list;
    const id native = static_cast<id>(array);
    if (![native isKindOfClass:[NSArray class]]) return list;
    for (id member in static_cast<NSArray*>(native))
        if (areProperties(member)) list.push_back(propertiesOf(member));
    return list;
}

Error errorOf(const Native object) {
    const id native = static_cast<id>(object);
    if (![native isKindOfClass:[NSError class]]) return {};
    NSError* const error = native;
    NSString* const ours = ::OSSystemExtensionErrorDomain;
    const bool isOurs = [[error domain] isEqual:ours];
    return {isOurs ? std::string{OSSystemExtensionErrorDomain} : textOf([error domain]), [error code],
            textOf([error localizedDescription])};
}

} // namespace platform
