#include "platform/posix/QuietPipes.h"

namespace platform {

namespace {

sigset_t sigpipeAlone() {
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGPIPE);
    return set;
}

bool sigpipeIsPending() {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

} // namespace

QuietPipes::QuietPipes() : wasPending_{sigpipeIsPending()} {
    const auto pipe = sigpipeAlone();
    pthread_sigmask(SIG_BLOCK, &pipe, &before_);
}

QuietPipes::~QuietPipes() {
    if (!wasPending_ && sigpipeIsPending()) {
        const auto pipe = sigpipeAlone();
        int taken = 0;
        sigwait(&pipe, &taken);
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

} // namespace platform
