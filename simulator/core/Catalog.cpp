#include "simulator/core/Catalog.h"

#include <set>
#include <utility>

namespace simulator {

Catalog::Catalog(const State& state, const Disk& disk) : state_{state}, disk_{disk} {
}

std::vector<BundleOnDisk> Catalog::bundles() const {
    std::set<std::string> paths = state_.applications;
    for (const std::string& folder : state_.settings.applicationsFolders) {
        for (const std::string& path : disk_.bundlesIn(folder))
            paths.insert(path);
    }
    std::vector<BundleOnDisk> found;
    for (const std::string& path : paths) {
        if (auto bundle = disk_.read(path)) found.push_back(std::move(*bundle));
    }
    return found;
}

std::vector<std::string> Catalog::identifiers() const {
    std::set<std::string> found;
    for (const auto& [identifier, extension] : state_.seen)
        found.insert(identifier);
    for (const BundleOnDisk& bundle : bundles()) {
        for (const ExtensionOnDisk& extension : bundle.extensions) {
            if (!extension.identifier.empty()) found.insert(extension.identifier);
        }
    }
    return {found.begin(), found.end()};
}

std::optional<Extension> Catalog::find(const std::string& identifier) const {
    if (identifier.empty()) return std::nullopt;
    if (const auto seen = state_.seen.find(identifier); seen != state_.seen.end()) return seen->second;
    for (const BundleOnDisk& bundle : bundles()) {
        for (const ExtensionOnDisk& extension : bundle.extensions) {
            if (extension.identifier != identifier) continue;
            return Extension{extension.team, identifier, extension.name, extension.category.value_or(Category::driver),
                             bundle.identifier};
        }
    }
    return std::nullopt;
}

} // namespace simulator
