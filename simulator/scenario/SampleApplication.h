#pragma once

#include "simulator/core/Disk.h"
#include "simulator/scenario/Step.h"

#include <string>

namespace simulator::scenario {

/// The application that is on every Mac when a scenario begins, and that is meant where a line names none.
inline constexpr auto sampleName = "Driver Manager";
inline constexpr auto sampleTeam = "KELVRA0001";

/// In /Applications, sound, with two drivers and a camera extension, each 2.1/2105.
BundleOnDisk sampleApplication();

/// Puts an extension into a bundle, as the line says.
void carry(BundleOnDisk& bundle, const Carry& line);

/// A sound extension, by its file name: a driver, or else a camera.
ExtensionOnDisk extensionNamed(const std::string& fileName, const Version& version);

} // namespace simulator::scenario
