#include "platform/Output.h"

#include "platform/posix/StandardStreams.h"

#include <unistd.h>

namespace platform {

void printLine(const std::string_view line) {
    static LineWriter standardOutput{STDOUT_FILENO};
    standardOutput.write(line);
}

} // namespace platform
