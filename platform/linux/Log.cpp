#include "platform/Log.h"

#include "platform/posix/StandardStreams.h"

#include <unistd.h>

namespace platform {

namespace {

/// A control character from U+0080 to U+009F, two bytes in UTF-8.
bool isUpperControl(const std::string_view rest) {
    return rest.size() > 1 && rest[0] == '\xC2' && (static_cast<unsigned char>(rest[1]) & 0xE0U) == 0x80;
}

/// Escapes line breaks and control characters: a call is one line, and a terminal must not take it as a command.
std::string escaped(const std::string_view text) {
    constexpr const char* digits = "0123456789abcdef";
    std::string line;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool isUpper = isUpperControl(text.substr(at));
        if (isUpper) ++at;
        const char c = text[at];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\r') {
            line += "\\r";
        } else if (isUpper || (byte < 0x20 && c != '\t') || byte == 0x7F) {
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
