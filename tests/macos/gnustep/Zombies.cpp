#include "tests/macos/gnustep/Zombies.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace macos_tests {

void haveZombies(char** const argv) {
    if (std::getenv("CRASH_ON_ZOMBIE")) return;
    setenv("NSZombieEnabled", "YES", 1);
    setenv("CRASH_ON_ZOMBIE", "YES", 1);
    execv("/proc/self/exe", argv);
    std::perror("zombies");
    std::exit(1);
}

} // namespace macos_tests
