#include "simulator/disk/RealDisk.h"

#include "simulator/disk/ProfileReader.h"
#include "simulator/disk/Seal.h"

#include <QDir>
#include <QFileInfo>

namespace simulator {

namespace {

constexpr auto installEntitlement = "com.apple.developer.system-extension.install";
constexpr auto groupsEntitlement = "com.apple.security.application-groups";
constexpr auto extensionsFolder = "/Contents/Library/SystemExtensions";

std::optional<Category> categoryOf(const PropertyList& info, bool isDriver) {
    if (isDriver) return Category::driver;
    if (info["CMIOExtension"].is<PropertyList::Dictionary>()) return Category::camera;
    if (info["NetworkExtension"].is<PropertyList::Dictionary>()) return Category::network;
    if (!info["NSEndpointSecurityMachServiceName"].text().empty()) return Category::endpointSecurity;
    return std::nullopt;
}

std::string nameOf(const PropertyList& info, const std::string& otherwise) {
    for (const auto* const key : {"CFBundleDisplayName", "CFBundleName"}) {
        if (!info[key].text().empty()) return info[key].text();
    }
    return otherwise;
}

void readInfo(ExtensionOnDisk& extension, const PropertyList& info, const QFileInfo& folder) {
    const bool isDriver = folder.suffix() == "dext";
    const bool isExtension = isDriver || folder.suffix() == "systemextension";
    extension.identifier = info["CFBundleIdentifier"].text();
    extension.shortVersion = info["CFBundleShortVersionString"].text();
    extension.version = info["CFBundleVersion"].text();
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
    for (const QFileInfo& folder : foldersIn(bundle + extensionsFolder))
        found.extensions.push_back(readExtension(folder));
    return found;
}

std::vector<std::string> RealDisk::bundlesIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const QFileInfo& entry : foldersIn(folder)) {
        if (entry.suffix() == "app") paths.push_back(entry.canonicalFilePath().toStdString());
    }
    return paths;
}

std::variant<Profile, Refusal> RealDisk::profileIn(const std::string& contents) const {
    return readProfile(contents);
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
