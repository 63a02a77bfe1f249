#include "simulator/disk/RealDisk.h"

#include "simulator/disk/Seal.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <array>

namespace simulator {

namespace {

// Bundles ------------------------------------------------------------------------------------------------------------

constexpr auto installEntitlement = "com.apple.developer.system-extension.install";
constexpr auto groupsEntitlement = "com.apple.security.application-groups";

std::optional<Category> categoryOf(const PropertyList& info, bool isDriver) {
    if (isDriver) return Category::driver;
    if (info["CMIOExtension"].is<PropertyList::Dictionary>()) return Category::camera;
    if (info["NetworkExtension"].is<PropertyList::Dictionary>()) return Category::network;
    if (!info["NSEndpointSecurityMachServiceName"].text().empty()) return Category::endpointSecurity;
    return std::nullopt;
}

std::string nameOf(const PropertyList& info, const std::string& otherwise) {
    for (const auto* const key : {"CFBundleDisplayName", "CFBundleName"})
        if (!info[key].text().empty()) return info[key].text();
    return otherwise;
}

void readInfo(ExtensionOnDisk& extension, const PropertyList& info, const QFileInfo& folder) {
    const bool isDriver = folder.suffix() == "dext";
    const bool isExtension = isDriver || folder.suffix() == "systemextension";
    extension.identifier = info["CFBundleIdentifier"].text();
    extension.version = {info["CFBundleShortVersionString"].text(), info["CFBundleVersion"].text()};
    extension.name = nameOf(info, folder.completeBaseName().toStdString());
    extension.category = isExtension ? categoryOf(info, isDriver) : std::nullopt;
    const auto* const usage = isDriver ? "OSBundleUsageDescription" : "NSSystemExtensionUsageDescription";
    extension.hasUsageDescription = !info[usage].text().empty();
    extension.machServiceName = info["CMIOExtension"]["CMIOExtensionMachServiceName"].text();
}

void readSealOf(ExtensionOnDisk& extension, const std::string& path) {
    const auto seal = readSeal(path);
    if (!seal) {
        extension.sealMatches = false;
        return;
    }
    extension.team = seal->team;
    for (const std::string& group : seal->entitlements[groupsEntitlement].texts())
        extension.applicationGroups.insert(group);
}

PropertyList infoOf(const std::string& bundle) {
    return PropertyList::read(contentsOf(bundle) + "/Info.plist").value_or(PropertyList{});
}

ExtensionOnDisk readExtension(const QFileInfo& folder) {
    const std::string path = folder.filePath().toStdString();
    ExtensionOnDisk extension;
    extension.fileName = folder.fileName().toStdString();
    readInfo(extension, infoOf(path), folder);
    readSealOf(extension, path);
    return extension;
}

QFileInfoList foldersIn(const std::string& path) {
    return QDir{QString::fromStdString(path)}.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

// A management profile -----------------------------------------------------------------------------------------------

constexpr auto policyType = "com.apple.system-extension-policy";

template <typename Value>
bool isA(const PropertyList& value) {
    return value.is<Value>();
}

template <typename Element>
bool isArrayOf(const PropertyList& value) {
    const PropertyList::Array& elements = value.array();
    return isA<PropertyList::Array>(value) && std::all_of(elements.begin(), elements.end(), isA<Element>);
}

bool isTextsOfTeams(const PropertyList& value) {
    const auto isSound = [](const auto& entry) { return isArrayOf<std::string>(entry.second); };
    const PropertyList::Dictionary& teams = value.dictionary();
    return isA<PropertyList::Dictionary>(value) && std::all_of(teams.begin(), teams.end(), isSound);
}

struct Key {
    const char* name;
    bool (*isSound)(const PropertyList& value);
    const char* shape;
};

constexpr auto textsOfTeams = "a dictionary with an array of texts for each team";
constexpr Key payloadContent{"PayloadContent", isArrayOf<PropertyList::Dictionary>, "an array of dictionaries"};
constexpr Key payloadType{"PayloadType", isA<std::string>, "a text"};
constexpr std::array rules{Key{"AllowedSystemExtensions", isTextsOfTeams, textsOfTeams},
                           Key{"AllowedTeamIdentifiers", isArrayOf<std::string>, "an array of texts"},
                           Key{"AllowUserOverrides", isA<bool>, "true or false"},
                           Key{"RemovableSystemExtensions", isTextsOfTeams, textsOfTeams}};

bool has(const PropertyList& payload, const Key& key) {
    return payload.dictionary().count(key.name) != 0;
}

/// A payload that does not say what it is about is what its keys are about.
bool isPolicy(const PropertyList& payload) {
    if (has(payload, payloadType)) return payload[payloadType.name].text() == policyType;
    return std::any_of(rules.begin(), rules.end(), [&](const Key& rule) { return has(payload, rule); });
}

Refusal refusal(const std::string& problem) {
    return {Refusal::Kind::invalidArgument, "the profile " + problem};
}

/// Throws a refusal where the key's value is of the wrong type.
void check(const PropertyList& payload, const Key& key) {
    if (!has(payload, key) || key.isSound(payload[key.name])) return;
    throw refusal(std::string{"is malformed: "} + key.name + " has to be " + key.shape);
}

void add(Profile::IdentifiersOfTeam& lists, const PropertyList& ofTeams) {
    for (const auto& [team, identifiers] : ofTeams.dictionary())
        for (const std::string& identifier : identifiers.texts())
            lists[team].insert(identifier);
}

void addPolicy(Profile& profile, const PropertyList& payload) {
    for (const Key& rule : rules)
        check(payload, rule);
    add(profile.allowedExtensions, payload["AllowedSystemExtensions"]);
    add(profile.removableExtensions, payload["RemovableSystemExtensions"]);
    for (const std::string& team : payload["AllowedTeamIdentifiers"].texts())
        profile.allowedTeams.insert(team);
    const PropertyList& overrides = payload["AllowUserOverrides"];
    if (isA<bool>(overrides) && !overrides.isTrue()) profile.allowsUserOverrides = false;
}

Profile policyIn(const PropertyList& list) {
    check(list, payloadContent);
    PropertyList::Array payloads = list[payloadContent.name].array();
    payloads.push_back(list); // the keys may lie in it, too
    Profile profile;
    bool isAny = false;
    for (const PropertyList& payload : payloads) {
        check(payload, payloadType);
        if (!isPolicy(payload)) continue;
        addPolicy(profile, payload);
        isAny = true;
    }
    if (!isAny) throw refusal("holds no system extension policy");
    return profile;
}

} // namespace

std::optional<BundleOnDisk> RealDisk::read(const std::string& bundle) const {
    if (!QFileInfo{QString::fromStdString(bundle + "/Contents")}.isDir()) return std::nullopt;
    BundleOnDisk found;
    found.path = bundle;
    found.identifier = infoOf(bundle)["CFBundleIdentifier"].text();
    if (const auto seal = readSeal(bundle)) {
        found.team = seal->team;
        found.mayInstallExtensions = seal->entitlements[installEntitlement].isTrue();
    }
    for (const QFileInfo& folder : foldersIn(pathOf(found, {})))
        found.extensions.push_back(readExtension(folder));
    return found;
}

std::vector<std::string> RealDisk::bundlesIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const QFileInfo& entry : foldersIn(folder))
        if (entry.suffix() == "app") paths.push_back(entry.canonicalFilePath().toStdString());
    return paths;
}

std::variant<Profile, Refusal> readProfile(const std::string& bytes) {
    if (bytes.empty()) return Profile{};
    const auto list = PropertyList::parse(bytes);
    if (!list) return refusal("is no property list");
    try {
        Profile profile = policyIn(*list);
        profile.source = bytes;
        return profile;
    } catch (const Refusal& problem) {
        return problem;
    }
}

bool isAsSealed(const std::string& extension) {
    const auto seal = readSeal(extension);
    return seal && digestsOf(extension) == seal->files;
}

std::string bundleOfFile(const std::string& file) {
    const std::size_t end = file.rfind(".app/Contents/");
    return end == std::string::npos ? std::string{} : canonicalPath(file.substr(0, end + 4));
}

std::string canonicalPath(const std::string& path) {
    const QString canonical = QFileInfo{QString::fromStdString(path)}.canonicalFilePath();
    return canonical.isEmpty() ? path : canonical.toStdString();
}

} // namespace simulator
