#include "tests/macos/gnustep/StandIns.h"

#include <os/log.h>

#include <cstdarg>
#include <cstring>

namespace standin {

std::vector<std::string>& loggedLines() {
    static std::vector<std::string> lines;
    return lines;
}

} // namespace standin

void standInForLog(os_log_t, const char* format, ...) {
    std::string line;
    va_list arguments;
    va_start(arguments, format);
    for (const char* at = format; *at != '\0'; ++at) {
        if (std::strncmp(at, "%{public}s", 10) == 0) {
            line += va_arg(arguments, const char*);
            at += 9;
        } else if (std::strncmp(at, "%s", 2) == 0) {
            line += "<private>";
            static_cast<void>(va_arg(arguments, const char*));
            at += 1;
        } else {
            line += *at;
        }
    }
    va_end(arguments);
    standin::loggedLines().push_back(line);
}
