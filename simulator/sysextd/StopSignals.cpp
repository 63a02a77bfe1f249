#include "simulator/sysextd/StopSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

namespace simulator {

namespace {

int openDescriptor() {
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTERM);
    sigaddset(&stops, SIGINT);
    if (sigprocmask(SIG_BLOCK, &stops, nullptr) != 0) throw std::runtime_error{"signals cannot be blocked"};
    const int descriptor = signalfd(-1, &stops, SFD_CLOEXEC);
    if (descriptor < 0) throw std::runtime_error{"signals cannot be read"};
    return descriptor;
}

} // namespace

StopSignals::StopSignals() : descriptor_{openDescriptor()}, notifier_{descriptor_, QSocketNotifier::Read} {
    connect(&notifier_, &QSocketNotifier::activated, this, [this] {
        notifier_.setEnabled(false);
        emit came();
    });
}

StopSignals::~StopSignals() {
    close(descriptor_);
}

} // namespace simulator
