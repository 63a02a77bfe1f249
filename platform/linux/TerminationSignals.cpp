#include "platform/linux/TerminationSignals.h"

#include <sys/signalfd.h>
#include <unistd.h>

namespace platform {

namespace {

bool isIgnored(const int signal) {
    struct sigaction current {};
    return sigaction(signal, nullptr, &current) == 0 && current.sa_handler == SIG_IGN;
}

sigset_t signalsToWatch() {
    sigset_t watched;
    sigemptyset(&watched);
    for (const int signal : {SIGINT, SIGTERM})
        if (!isIgnored(signal)) sigaddset(&watched, signal);
    return watched;
}

} // namespace

TerminationSignals::TerminationSignals() {
    const sigset_t watched = signalsToWatch();
    descriptor_ = signalfd(-1, &watched, SFD_NONBLOCK | SFD_CLOEXEC);
    // Without a descriptor the signals keep their own way of ending the process.
    if (descriptor_ == -1)
        sigemptyset(&before_);
    else
        pthread_sigmask(SIG_BLOCK, &watched, &before_);
}

TerminationSignals::~TerminationSignals() {
    notifier_.reset();
    if (descriptor_ == -1) return;
    close(descriptor_);
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void TerminationSignals::watch(std::function<void(int signal)> handler) {
    if (descriptor_ == -1) return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [descriptor = descriptor_, handler = std::move(handler)] {
                         signalfd_siginfo info{};
                         while (read(descriptor, &info, sizeof info) == sizeof info)
                             handler(static_cast<int>(info.ssi_signo));
                     });
}

} // namespace platform
