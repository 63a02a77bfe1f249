#pragma once

#include "platform/SystemExtensions.h"

#include <memory>
#include <string>

namespace contract {

inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";
inline constexpr auto nobody = "com.kelvra.nobody";

/// One of the stand-ins for the operating system's extension service, on a machine of its own.
///
/// The application that asks carries `camera` and `driver`, both 2.1/2105, and no `nobody`. At first nothing is
/// installed. What cannot be done fails the test.
class Stage {
public:
    Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    virtual ~Stage() = default;

    virtual platform::OSSystemExtensionManager& manager() = 0;

    /// Puts a copy there, younger than those before it. condition: "enabled", "waiting", "disabled", "uninstalling".
    virtual void install(const std::string& identifier, const std::string& shortVersion, const std::string& version,
                         const std::string& condition) = 0;
    /// From here on an enabled driver runs on until the restart, whatever becomes of it.
    virtual void keepDriversRunning() = 0;
    /// The next request of that kind fails.
    virtual void failNext(platform::OSSystemExtensionRequest::Kind kind, const platform::Error& error) = 0;

    /// The user allows, or denies, what waits for approval.
    virtual void allow(const std::string& identifier) = 0;
    virtual void deny(const std::string& identifier) = 0;
    /// An administrator authorises, or refuses, the removal that waits for it.
    virtual void authorize(const std::string& identifier) = 0;
    virtual void refuse(const std::string& identifier) = 0;

    /// Returns when the service has nothing left to do by itself, and all that it said has been delivered. Nothing is
    /// delivered but in here.
    virtual void settle() = 0;
};

/// The stage of this program, as new.
std::unique_ptr<Stage> makeStage();

} // namespace contract
