#pragma once

#include "simulator/core/Disk.h"

#include <QString>

namespace simulator::play {

/// Puts a bundle into a folder of the real disk, instead of what is there, so that it is read as it is described, right
/// or wrong; its description's own path is not looked at. Its program is a copy of that program. Throws
/// scenario::NotDone.
void writeBundle(const BundleOnDisk& bundle, const QString& folder, const QString& program);

/// Where the program of a bundle lies.
QString programOf(const QString& folder);

} // namespace simulator::play
