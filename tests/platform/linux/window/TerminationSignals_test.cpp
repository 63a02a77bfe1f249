#include "platform/linux/TerminationSignals.h"

#include "tests/platform/linux/window/WindowTest.h"
#include "tests/support/EventLoop.h"

#include <csignal>

namespace platform {
namespace {

/// Gives a signal a disposition for as long as it lives.
class Disposition {
public:
    Disposition(const int signal, void (*const handler)(int))
        : signal_{signal}, before_{std::signal(signal, handler)} {}
    Disposition(const Disposition&) = delete;
    Disposition& operator=(const Disposition&) = delete;
    ~Disposition() { std::signal(signal_, before_); }

private:
    int signal_;
    void (*before_)(int);
};

class Termination : public testing::Test {
protected:
    TestApplication application_;
    std::vector<int> came_;
};

TEST_F(Termination, ReportsEachSignalFromTheMainLoop) {
    TerminationSignals termination;
    termination.watch([this](const int signal) { came_.push_back(signal); });
    std::raise(SIGTERM);
    EXPECT_EQ(came_, std::vector<int>{});
    EXPECT_TRUE(tests::processEventsUntil([this] { return came_.size() == 1; }));
    std::raise(SIGINT);
    EXPECT_TRUE(tests::processEventsUntil([this] { return came_.size() == 2; }));
    EXPECT_EQ(came_, (std::vector<int>{SIGTERM, SIGINT}));
}

TEST_F(Termination, LeavesASignalIgnoredThatWasIgnoredBefore) {
    const Disposition ignored{SIGINT, SIG_IGN};
    TerminationSignals termination;
    termination.watch([this](const int signal) { came_.push_back(signal); });
    std::raise(SIGINT);
    std::raise(SIGTERM);
    EXPECT_TRUE(tests::processEventsUntil([this] { return !came_.empty(); }));
    EXPECT_EQ(came_, std::vector<int>{SIGTERM});
}

TEST_F(Termination, ReportsASignalThatCameBeforeItWasWatchedFor) {
    TerminationSignals termination;
    std::raise(SIGTERM);
    termination.watch([this](const int signal) { came_.push_back(signal); });
    EXPECT_TRUE(tests::processEventsUntil([this] { return !came_.empty(); }));
}

TEST_F(Termination, LeavesOtherSignalsAlone) {
    const TerminationSignals termination;
    sigset_t blocked;
    sigemptyset(&blocked);
    pthread_sigmask(SIG_BLOCK, nullptr, &blocked);
    EXPECT_TRUE(sigismember(&blocked, SIGTERM));
    for (const int other : {SIGHUP, SIGCHLD, SIGUSR1, SIGQUIT})
        EXPECT_FALSE(sigismember(&blocked, other));
}

} // namespace
} // namespace platform
