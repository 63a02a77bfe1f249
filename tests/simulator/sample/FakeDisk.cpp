#include "tests/simulator/sample/FakeDisk.h"

namespace simulator {

std::optional<BundleOnDisk> FakeDisk::read(const std::string& bundle) const {
    const auto found = bundles_.find(bundle);
    return found == bundles_.end() ? std::nullopt : std::optional{found->second};
}

std::vector<std::string> FakeDisk::bundlesIn(const std::string& folder) const {
    std::vector<std::string> paths;
    for (const auto& [path, bundle] : bundles_) {
        if (path.substr(0, path.rfind('/')) == folder) paths.push_back(path);
    }
    return paths;
}

std::variant<Profile, Refusal> FakeDisk::profileIn(const std::string& contents) const {
    const auto found = profiles_.find(contents);
    if (found == profiles_.end()) return Refusal{Refusal::Kind::invalidArgument, "the profile is malformed"};
    return found->second;
}

BundleOnDisk sampleBundle() {
    ExtensionOnDisk cameraExtension;
    cameraExtension.fileName = std::string{camera} + ".systemextension";
    cameraExtension.identifier = camera;
    cameraExtension.version = {"2.1", "2105"};
    cameraExtension.name = "Camera";
    cameraExtension.category = Category::camera;
    cameraExtension.hasUsageDescription = true;
    cameraExtension.machServiceName = "KELVRA0001.group.camera";
    cameraExtension.team = sampleTeam;
    cameraExtension.applicationGroups = {"KELVRA0001.group"};
    cameraExtension.sealMatches = true;

    ExtensionOnDisk driverExtension = cameraExtension;
    driverExtension.fileName = std::string{driver} + ".dext";
    driverExtension.identifier = driver;
    driverExtension.name = "Network";
    driverExtension.category = Category::driver;
    driverExtension.machServiceName.clear();

    return {sampleApplication, "com.kelvra.driver-manager", sampleTeam, true, {cameraExtension, driverExtension}};
}

BundleOnDisk otherBundle() {
    BundleOnDisk other = sampleBundle();
    other.path = "/Applications/Other.app";
    other.identifier = "com.example.other";
    return other;
}

void setVersion(BundleOnDisk& bundle, const std::string& shortVersion, const std::string& version) {
    for (ExtensionOnDisk& extension : bundle.extensions)
        extension.version = {shortVersion, version};
}

} // namespace simulator
