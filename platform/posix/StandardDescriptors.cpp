#include "platform/posix/StandardDescriptors.h"

#include <fcntl.h>
#include <unistd.h>

namespace platform {

void occupyStandardDescriptors() {
    // An open takes the lowest free descriptor, so a free one below the third is taken in turn.
    int opened = 0;
    do {
        opened = open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0) close(opened);
}

} // namespace platform
