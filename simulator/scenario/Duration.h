#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace simulator::scenario {

/// Reads "90s", "1.5h", "250ms": digits, with or without a fraction, and one of ms, s, m, h, d; seconds if there is
/// none. Yields whole milliseconds, at most a thousand years of them; nothing if the text is anything else.
std::optional<std::int64_t> millisecondsOf(std::string_view text);

} // namespace simulator::scenario
