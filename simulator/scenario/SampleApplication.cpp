#include "simulator/scenario/SampleApplication.h"

#include <algorithm>

namespace simulator::scenario {

namespace {

std::string stemOf(const std::string& fileName) {
    return fileName.substr(0, fileName.rfind('.'));
}

std::string suffixOf(const std::string& fileName) {
    return fileName.substr(stemOf(fileName).size());
}

void giveTeam(ExtensionOnDisk& extension, const std::string& team) {
    if (extension.team.empty()) extension.team = team;
    if (extension.category != Category::camera || !extension.machServiceName.empty()) return;
    extension.machServiceName = extension.team + "." + stemOf(extension.fileName);
    extension.applicationGroups = {stemOf(extension.machServiceName)};
}

ExtensionOnDisk sampleExtension(const std::string& fileName, const std::string& name) {
    ExtensionOnDisk extension = extensionNamed(fileName, {"2.1", "2105"});
    extension.name = name;
    return extension;
}

} // namespace

ExtensionOnDisk extensionNamed(const std::string& fileName, const Version& version) {
    ExtensionOnDisk extension;
    extension.fileName = fileName;
    extension.identifier = stemOf(fileName);
    extension.shortVersion = version.shortVersion;
    extension.version = version.version;
    extension.name = stemOf(fileName);
    if (suffixOf(fileName) == ".dext") extension.category = Category::driver;
    if (suffixOf(fileName) == ".systemextension") extension.category = Category::camera;
    extension.hasUsageDescription = true;
    extension.sealMatches = true;
    return extension;
}

void carry(BundleOnDisk& bundle, const Carry& line) {
    ExtensionOnDisk extension = line.extension;
    if (line.isSealed) giveTeam(extension, bundle.team);
    auto& all = bundle.extensions;
    const auto isOfThatFile = [&](const ExtensionOnDisk& other) { return other.fileName == extension.fileName; };
    all.erase(std::remove_if(all.begin(), all.end(), isOfThatFile), all.end());
    all.push_back(extension);
    std::sort(all.begin(), all.end(),
              [](const ExtensionOnDisk& left, const ExtensionOnDisk& right) { return left.fileName < right.fileName; });
}

BundleOnDisk sampleApplication() {
    BundleOnDisk bundle{
        std::string{"/Applications/"} + sampleName + ".app", "com.kelvra.driver-manager", sampleTeam, true, {}};
    carry(bundle, {sampleName, sampleExtension("com.kelvra.driverkit.base.dext", "Base"), true});
    carry(bundle, {sampleName, sampleExtension("com.kelvra.driverkit.usb-to-poe.dext", "Network"), true});
    carry(bundle, {sampleName, sampleExtension("com.kelvra.ip-camera.cmio.systemextension", "Camera"), true});
    return bundle;
}

} // namespace simulator::scenario
