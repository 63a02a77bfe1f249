#pragma once

#include <csignal>

namespace platform {

/// While one lives, a write of this thread to a pipe that nobody reads fails with EPIPE and raises no SIGPIPE. What the
/// process does with that signal otherwise is left alone.
class QuietPipes {
public:
    QuietPipes();
    QuietPipes(const QuietPipes&) = delete;
    QuietPipes& operator=(const QuietPipes&) = delete;
    ~QuietPipes();

private:
    sigset_t before_;
    bool wasPending_;
};

} // namespace platform
