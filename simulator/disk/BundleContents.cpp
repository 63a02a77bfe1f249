#include "simulator/disk/BundleContents.h"

#include <QFileInfo>

namespace simulator {

std::string contentsOf(const std::string& bundle) {
    const std::string contents = bundle + "/Contents";
    return QFileInfo{QString::fromStdString(contents)}.isDir() ? contents : bundle;
}

} // namespace simulator
