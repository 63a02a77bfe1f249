#pragma once

#include <QString>

namespace simulator::tests {

inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";

/// Makes a sealed application with a camera extension and a driver, both 2.1/2105, out of a program. Answers with the
/// path of the program in it.
QString makeSampleBundle(const QString& path, const QString& program,
                         const QString& identifier = "com.kelvra.driver-manager");

} // namespace simulator::tests
