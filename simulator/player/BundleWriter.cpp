#include "simulator/player/BundleWriter.h"

#include "simulator/disk/Seal.h"
#include "simulator/player/Mac.h"
#include "simulator/player/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace simulator::player {

namespace {

using Dictionary = PropertyList::Dictionary;

void writeInfo(const QString& bundle, const Dictionary& info) {
    writeFile(bundle + "/Contents/Info.plist", QByteArray::fromStdString(PropertyList{info}.toXml()));
}

void seal(const QString& bundle, const std::string& team, const Dictionary& entitlements) {
    const std::string path = bundle.toStdString();
    const auto digests = digestsOf(path);
    const std::string problem = digests ? writeSeal(path, {team, entitlements, *digests}) : "it cannot be read";
    if (!problem.empty()) throw NotDone{path + ": " + problem};
}

/// What an Info.plist says of an extension's category; a driver's is its file name alone.
void describeCategory(Dictionary& info, const ExtensionOnDisk& extension) {
    if (extension.category == Category::camera) {
        info["CMIOExtension"] = Dictionary{{"CMIOExtensionMachServiceName", extension.machServiceName}};
    } else if (extension.category == Category::network) {
        info["NetworkExtension"] = Dictionary{};
    } else if (extension.category == Category::endpointSecurity) {
        info["NSEndpointSecurityMachServiceName"] = extension.identifier;
    }
}

Dictionary infoOf(const ExtensionOnDisk& extension) {
    Dictionary info{{"CFBundleDisplayName", extension.name},
                    {"CFBundleShortVersionString", extension.shortVersion},
                    {"CFBundleVersion", extension.version}};
    if (!extension.identifier.empty()) info["CFBundleIdentifier"] = extension.identifier;
    describeCategory(info, extension);
    const bool isDriver = QFileInfo{QString::fromStdString(extension.fileName)}.suffix() == "dext";
    const auto* const usage = isDriver ? "OSBundleUsageDescription" : "NSSystemExtensionUsageDescription";
    if (extension.hasUsageDescription) info[usage] = "Plays its part in a scenario.";
    return info;
}

Dictionary entitlementsOf(const ExtensionOnDisk& extension) {
    if (extension.applicationGroups.empty()) return {};
    PropertyList::Array groups{extension.applicationGroups.begin(), extension.applicationGroups.end()};
    return {{"com.apple.security.application-groups", std::move(groups)}};
}

void writeExtension(const ExtensionOnDisk& extension, const QString& folder) {
    const QString path = folder + "/" + QString::fromStdString(extension.fileName);
    writeInfo(path, infoOf(extension));
    writeFile(path + "/Contents/MacOS/code", "as it was sealed");
    if (extension.team.empty()) return;
    seal(path, extension.team, entitlementsOf(extension));
    if (!extension.sealMatches.value_or(true)) writeFile(path + "/Contents/MacOS/code", "changed since");
}

Dictionary infoOf(const BundleOnDisk& bundle) {
    Dictionary info{{"CFBundleIdentifier", bundle.identifier}, {"CFBundleExecutable", "submit"}};
    if (bundle.extensions.empty()) return info;
    info["CFBundleShortVersionString"] = bundle.extensions.front().shortVersion;
    info["CFBundleVersion"] = bundle.extensions.front().version;
    return info;
}

} // namespace

void writeBundle(const BundleOnDisk& bundle, const QString& folder, const QString& program) {
    if (!QDir{folder}.removeRecursively()) throw NotDone{folder.toStdString() + ": it cannot be removed"};
    writeInfo(folder, infoOf(bundle));
    for (const ExtensionOnDisk& extension : bundle.extensions)
        writeExtension(extension, folder + "/Contents/Library/SystemExtensions");
    QDir{}.mkpath(QFileInfo{programOf(folder)}.path());
    if (!QFile::copy(program, programOf(folder))) {
        throw NotDone{program.toStdString() + ": it cannot be copied into an application"};
    }
    if (bundle.team.empty()) return;
    Dictionary entitlements;
    if (bundle.mayInstallExtensions) entitlements["com.apple.developer.system-extension.install"] = true;
    seal(folder, bundle.team, entitlements);
}

QString programOf(const QString& folder) {
    return folder + "/Contents/MacOS/submit";
}

} // namespace simulator::player
