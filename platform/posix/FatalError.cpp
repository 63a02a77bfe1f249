#include "platform/FatalError.h"

#include "platform/posix/StandardStreams.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <string>

namespace platform {

namespace {

bool isLineBreak(const char character) {
    return character == '\n' || character == '\r';
}

} // namespace

void fatalError(const std::string_view message) {
    std::string line = "Fatal error: " + std::string{message};
    std::replace_if(line.begin(), line.end(), isLineBreak, ' ');
    LineWriter{STDERR_FILENO}.write(line);
    std::abort();
}

} // namespace platform
