#pragma once

#include <QSocketNotifier>

#include <csignal>
#include <functional>
#include <memory>

namespace platform {

/// While one lives, SIGINT and SIGTERM end the application by way of the main loop. A signal that was ignored before
/// stays so. Make it before any thread is started: threads inherit that they leave these signals alone.
class TerminationSignals {
public:
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    /// Calls `handler` from the main loop with the number of each signal that comes. Needs the application.
    void watch(std::function<void(int signal)> handler);

private:
    sigset_t before_{};
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace platform
