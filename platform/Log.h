#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace platform {

/// What a placeholder takes: %@ a text, %d an integer.
using LogArgument = std::variant<std::string_view, std::int64_t>;

/// `format` with its placeholders replaced by the arguments in order. An argument is never read as a format.
std::string composeLogLine(std::string_view format, std::initializer_list<LogArgument> arguments);

/// Writes one composed line to the system's log: the default log, type default. Never fails.
void writeLogLine(const std::string& line);

inline void log(const std::string_view format, const std::initializer_list<LogArgument> arguments = {}) {
    writeLogLine(composeLogLine(format, arguments));
}

} // namespace platform
