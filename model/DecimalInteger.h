#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace model {

/// Parses an optional "+" or "-" followed by one or more decimal digits. None for any other text, and if the integer
/// does not fit.
std::optional<std::int64_t> decimalInteger(std::string_view text);

} // namespace model
