#include "platform/Bundle.h"

#include "platform/linux/BundleReader.h"

#include <filesystem>

namespace platform {

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle bundle = [] {
        std::error_code error;
        return readBundleOfExecutable(std::filesystem::read_symlink("/proc/self/exe", error));
    }();
    return bundle;
}

} // namespace platform
