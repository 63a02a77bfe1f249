#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace model {

/// The integer that `text` spells: an optional "+" or "-", then one or more decimal digits and nothing else. None if
/// the text is anything else or the integer does not fit.
std::optional<std::int64_t> decimalInteger(std::string_view text);

} // namespace model
