#pragma once

namespace platform {

/// The exit status of an application that the simulated machine ended because it restarts: whoever started it is to
/// start it again. A closed window ends with 0.
inline constexpr int exitStatusOfRestart = 75;

} // namespace platform
