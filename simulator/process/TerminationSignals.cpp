#include "simulator/process/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <utility>

namespace simulator {

namespace {

int descriptorOfTermination() {
    sigset_t ending{};
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigaddset(&ending, SIGINT);
    const auto descriptor = signalfd(-1, &ending, SFD_CLOEXEC | SFD_NONBLOCK);
    // Without a descriptor the signals end the process as they always do.
    if (descriptor != -1) pthread_sigmask(SIG_BLOCK, &ending, nullptr);
    return descriptor;
}

} // namespace

TerminationSignals::TerminationSignals() : descriptor_{descriptorOfTermination()} {
}

TerminationSignals::~TerminationSignals() {
    notifier_.reset();
    if (descriptor_ != -1) close(descriptor_);
}

void TerminationSignals::handle(std::function<void()> handler) {
    if (descriptor_ == -1) return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), std::move(handler));
}

bool TerminationSignals::areWaiting() {
    sigset_t waiting{};
    return sigpending(&waiting) == 0 && (sigismember(&waiting, SIGTERM) == 1 || sigismember(&waiting, SIGINT) == 1);
}

} // namespace simulator
