#include "platform/Log.h"

namespace platform {

namespace {

std::string textOf(const LogArgument& argument) {
    if (const auto* text = std::get_if<std::string_view>(&argument)) return std::string{*text};
    return std::to_string(std::get<std::int64_t>(argument));
}

bool isPlaceholder(const std::string_view text) {
    return text.starts_with("%@") || text.starts_with("%d");
}

} // namespace

std::string composeLogLine(const std::string_view format, const std::initializer_list<LogArgument> arguments) {
    std::string line;
    const auto* next = arguments.begin();
    for (std::size_t at = 0; at < format.size();) {
        if (next != arguments.end() && isPlaceholder(format.substr(at))) {
            line += textOf(*next++);
            at += 2;
        } else {
            line += format[at++];
        }
    }
    return line;
}

} // namespace platform
