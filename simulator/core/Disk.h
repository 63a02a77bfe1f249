#pragma once

#include "simulator/core/State.h"

#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace simulator {

/// An extension in an application's bundle, as it was found, right or wrong.
struct ExtensionOnDisk {
    /// The name of its folder, such as "com.example.camera.systemextension".
    std::string fileName;
    /// From its Info.plist; empty where it has none.
    std::string identifier;
    Version version;
    std::string name;
    /// Nothing if it is of no known category.
    std::optional<Category> category;
    bool hasUsageDescription = false;
    /// Of a camera extension.
    std::string machServiceName;
    /// From its seal; empty where it has none.
    std::string team;
    std::set<std::string> applicationGroups;
    /// Each of its files is as it was when it was sealed, and none was added. Nothing: only reading them all would
    /// tell.
    std::optional<bool> sealMatches;
};

/// An application's bundle.
struct BundleOnDisk {
    /// Absolute, without links.
    std::string path;
    std::string identifier;
    /// From its seal; empty where it has none.
    std::string team;
    bool mayInstallExtensions = false;
    std::vector<ExtensionOnDisk> extensions;
};

/// The name of an extension's folder without what follows its last dot.
inline std::string stemOf(const std::string& fileName) {
    return fileName.substr(0, fileName.rfind('.'));
}

/// What follows: ".dext", with the dot.
inline std::string suffixOf(const std::string& fileName) {
    return fileName.substr(stemOf(fileName).size());
}

/// The folder of an extension in a bundle, or of all extensions if the file name is empty.
inline std::string pathOf(const BundleOnDisk& bundle, const ExtensionOnDisk& extension) {
    return bundle.path + "/Contents/Library/SystemExtensions/" + extension.fileName;
}

/// The extension itself, if its Info.plist and category are sound.
inline Extension extensionOf(const BundleOnDisk& bundle, const ExtensionOnDisk& found) {
    return {found.team, found.identifier, found.name, found.category.value_or(Category::driver), bundle.identifier};
}

/// Where applications lie, and what is read as it is on a disk.
class Disk {
public:
    Disk() = default;
    Disk(const Disk&) = delete;
    Disk& operator=(const Disk&) = delete;
    virtual ~Disk() = default;

    /// Nothing if there is no bundle at that path. It reads no file of an extension but its Info.plist and its seal.
    virtual std::optional<BundleOnDisk> read(const std::string& bundle) const = 0;
    /// The paths of the bundles that lie directly in a folder, in alphabetical order.
    virtual std::vector<std::string> bundlesIn(const std::string& folder) const = 0;
    /// The path without links; as it was given if there is nothing there.
    virtual std::string canonical(const std::string& path) const { return path; }
    /// The profile in a file's contents, or why it is none; empty contents are an empty profile.
    virtual std::variant<Profile, Refusal> profileIn(const std::string& contents) const = 0;
};

} // namespace simulator
