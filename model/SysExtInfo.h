#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace model {

/// One managed system extension. Answers of the operating system are matched to a record by its id.
struct SysExtInfo {
    /// The extension's bundle identifier.
    std::string id;
    /// Shown on the extension's card.
    std::string state = "Not installed";
    /// At least one copy was reported. Never becomes false again.
    bool present = false;
    bool enabled = false;
    /// A copy waits for the user's approval in the system settings.
    bool awaiting = false;
    /// The extension becomes active only after a restart of the computer.
    bool reboot = false;
    /// A copy is being uninstalled.
    bool uninst = false;
    /// The short version, "/" and the bundle version of the enabled copy.
    std::string version = "n/a";
    /// Names the icon's image; the dark variant is the same name followed by "Dark".
    std::string iconName;
    std::string driverName;
    /// The bundle version as an integer; 0 until known.
    std::int64_t intversion = 0;
};

/// The records of a new model, in the order of queries and cards. The camera must stay at position 1.
inline std::vector<SysExtInfo> initialRecords() {
    return {
        {.id = "com.kelvra.driverkit.base", .iconName = "Ethernet", .driverName = "Old Driver"},
        {.id = "com.kelvra.ip-camera.cmio", .iconName = "VideoCamera", .driverName = "Camera Driver"},
        {.id = "com.kelvra.driverkit.usb-to-poe", .iconName = "Ethernet", .driverName = "Network Driver"},
    };
}

} // namespace model
