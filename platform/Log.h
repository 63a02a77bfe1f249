#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace platform {

/// `format` with its placeholders, a percent sign and a letter each, replaced by the arguments in order. There are at
/// least as many placeholders as arguments; an argument is never read as a format.
std::string composeLogLine(std::string_view format, std::initializer_list<std::string_view> arguments);

/// Writes one composed line to the system's log: the default log, type default. Never fails.
void writeLogLine(const std::string& line);

/// Composes and writes a line: log("Sysex request failed: %@ (%@)", {description, reason}).
inline void log(const std::string_view format, const std::initializer_list<std::string_view> arguments = {}) {
    writeLogLine(composeLogLine(format, arguments));
}

} // namespace platform
