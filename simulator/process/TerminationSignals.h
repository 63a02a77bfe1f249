#pragma once

#include <QSocketNotifier>

#include <csignal>
#include <functional>
#include <memory>

namespace simulator {

/// Turns SIGTERM and SIGINT into events of the main loop. To be made before the application, whose threads must not
/// take the signals.
class TerminationSignals {
public:
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Calls the handler when one comes. Needs the application.
    void handle(std::function<void()> handler);

    /// Whether one has come that no handler has been called for, for a process that is busy outside its main loop.
    static bool areWaiting();

private:
    int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace simulator
