#include "platform/Log.h"

namespace platform {

std::string composeLogLine(std::string_view format, const std::initializer_list<std::string_view> arguments) {
    constexpr std::size_t placeholderLength = 2;
    std::string line;
    for (const auto argument : arguments) {
        const auto placeholder = format.find('%');
        line.append(format.substr(0, placeholder)).append(argument);
        format.remove_prefix(placeholder + placeholderLength);
    }
    return line.append(format);
}

} // namespace platform
