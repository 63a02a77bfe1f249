#include "simulator/core/Checks.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulator {

namespace {

struct Check {
    std::int64_t code;
    std::string_view description;
    bool (*fails)(const Subject& subject);
};

bool isNotCarried(const Subject& subject) {
    return !subject.extension;
}

bool isNested(const Subject& subject) {
    return subject.bundle->path.find(".app/") != std::string::npos;
}

bool lacksEntitlement(const Subject& subject) {
    return !subject.bundle->mayInstallExtensions;
}

bool isOutsideApplications(const Subject& subject) {
    if (subject.settings->developerMode) return false;
    const auto& folders = subject.settings->applicationsFolders;
    return std::none_of(folders.begin(), folders.end(), [&](const std::string& folder) {
        return subject.bundle->path.starts_with(folder.ends_with('/') ? folder : folder + "/");
    });
}

bool hasNoIdentifier(const Subject& subject) {
    return subject.extension->identifier.empty();
}

bool isShared(const Subject& subject) {
    const auto& all = subject.bundle->extensions;
    return std::count_if(all.begin(), all.end(), [&](const ExtensionOnDisk& extension) {
               return extension.identifier == subject.identifier;
           }) > 1;
}

bool isMisnamed(const Subject& subject) {
    return stemOf(subject.extension->fileName) != subject.identifier ||
           subject.extension->identifier != subject.identifier;
}

bool isOfNoKnownCategory(const Subject& subject) {
    const ExtensionOnDisk& extension = *subject.extension;
    if (!extension.category) return true;
    const bool isDriver = *extension.category == Category::driver;
    return suffixOf(extension.fileName) != (isDriver ? ".dext" : ".systemextension");
}

bool isOfAnotherTeam(const Subject& subject) {
    const std::string& team = subject.extension->team;
    return !team.empty() && team != subject.bundle->team;
}

bool isUnsealedOrChanged(const Subject& subject) {
    return subject.extension->team.empty() || !subject.sealMatches;
}

bool hasNoUsageDescription(const Subject& subject) {
    return !subject.extension->hasUsageDescription;
}

bool isCameraOutsideItsGroup(const Subject& subject) {
    const ExtensionOnDisk& extension = *subject.extension;
    if (extension.category != Category::camera) return false;
    const auto& groups = extension.applicationGroups;
    return std::none_of(groups.begin(), groups.end(),
                        [&](const std::string& group) { return extension.machServiceName.starts_with(group + "."); });
}

bool isForbidden(const Subject& subject) {
    return subject.settings->profile.forbids(subject.extension->team, subject.identifier);
}

constexpr std::string_view policyDescription = "The management profile does not allow the extension.";

// clang-format off
constexpr std::array lookups{
    Check{code::extensionNotFound,               "The application contains no extension with this identifier.",      isNotCarried},
    Check{code::unknown,                         "The application is inside another application.",                   isNested},
    Check{code::missingEntitlement,              "The application may not install system extensions.",               lacksEntitlement},
    Check{code::unsupportedParentBundleLocation, "The application must be in an Applications folder.",               isOutsideApplications},
    Check{code::extensionMissingIdentifier,      "The extension's Info.plist has no bundle identifier.",             hasNoIdentifier},
    Check{code::duplicateExtensionIdentifier,    "The application contains several extensions with this identifier.",isShared},
    Check{code::extensionNotFound,               "The extension's file name is not its identifier.",                 isMisnamed},
    Check{code::unknownExtensionCategory,        "The extension is of no known category.",                           isOfNoKnownCategory},
    Check{code::extensionNotFound,               "The extension and the application belong to different teams.",     isOfAnotherTeam},
};

constexpr std::array validations{
    Check{code::codeSignatureInvalid,    "The extension's files do not match its seal.",                             isUnsealedOrChanged},
    Check{code::validationFailed,        "The extension's Info.plist has no usage description.",                     hasNoUsageDescription},
    Check{code::validationFailed,        "The camera's Mach service name is not in its application group.",          isCameraOutsideItsGroup},
    Check{code::forbiddenBySystemPolicy, policyDescription,                                                          isForbidden},
};
// clang-format on

template <typename Checks>
std::optional<Failure> firstFailed(const Checks& checks, const Subject& subject) {
    for (const Check& check : checks)
        if (check.fails(subject)) return failureWith(check.code, check.description);
    return std::nullopt;
}

std::optional<ExtensionOnDisk> findExtension(const BundleOnDisk& bundle, const std::string& identifier) {
    std::optional<ExtensionOnDisk> byIdentifier;
    for (const ExtensionOnDisk& extension : bundle.extensions) {
        if (stemOf(extension.fileName) == identifier) return extension;
        if (extension.identifier == identifier) byIdentifier = extension;
    }
    return byIdentifier;
}

} // namespace

Subject subjectOf(std::optional<BundleOnDisk> bundle, const std::string& identifier, const Settings& settings) {
    auto extension = bundle ? findExtension(*bundle, identifier) : std::nullopt;
    return {std::move(bundle), identifier, &settings, std::move(extension), false};
}

bool isCarried(const Subject& subject) {
    if (isNotCarried(subject) || isOfAnotherTeam(subject)) return false;
    return hasNoIdentifier(subject) || !isMisnamed(subject);
}

std::optional<Failure> firstFailedLookup(const Subject& subject) {
    return firstFailed(lookups, subject);
}

std::optional<Failure> firstFailedValidation(const Subject& subject) {
    return firstFailed(validations, subject);
}

std::optional<Failure> failedPolicy(const Extension& extension, const Settings& settings) {
    if (!settings.profile.forbids(extension.team, extension.identifier)) return std::nullopt;
    return failureWith(code::forbiddenBySystemPolicy, policyDescription);
}

} // namespace simulator
