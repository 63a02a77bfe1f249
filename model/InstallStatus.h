#pragma once

#include <cstdint>

namespace model {

/// The overall status of the needed extensions. Derived from the records when it is shown, never stored.
enum class InstallStatus : std::uint8_t { allEnabled, awaitingAllow, nothingInstalled };

} // namespace model
