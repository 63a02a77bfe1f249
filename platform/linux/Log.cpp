#include "platform/Log.h"

#include "platform/posix/StandardStreams.h"

#include <unistd.h>

namespace platform {

namespace {

/// A call is a line: what would break it, or reach a terminal as a command, is written out.
std::string escaped(const std::string& text) {
    constexpr const char* digits = "0123456789abcdef";
    std::string line;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\r') {
            line += "\\r";
        } else if ((byte < 0x20 && c != '\t') || byte == 0x7F) {
            line += {'\\', 'x', digits[byte >> 4U], digits[byte & 0xFU]};
        } else {
            line += c;
        }
    }
    return line;
}

} // namespace

void writeLogLine(const std::string& line) {
    static LineWriter standardError{STDERR_FILENO};
    standardError.write(escaped(line));
}

} // namespace platform
