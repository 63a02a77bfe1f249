#pragma once

namespace simulator {

inline constexpr auto serviceName = "com.kelvra.Simulator1";
inline constexpr auto objectPath = "/com/kelvra/Simulator1";
inline constexpr auto interfaceName = "com.kelvra.Simulator1";
inline constexpr auto controlInterfaceName = "com.kelvra.Simulator1.Control";
/// What the names of error replies begin with; the interface's description lists the rest.
inline constexpr auto errorPrefix = "com.kelvra.Simulator1.Error.";

} // namespace simulator
