#pragma once

#include <cstdint>

namespace model {

/// The situation of the needed extensions as a whole. Derived from the records whenever it is shown, never stored.
enum class InstallStatus : std::uint8_t { allEnabled, awaitingAllow, nothingInstalled };

} // namespace model
