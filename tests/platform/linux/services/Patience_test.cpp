#include "SystemExtensionsTest.h"

#include <atomic>
#include <ctime>
#include <dlfcn.h>

// A test cannot wait for an hour, but it can have the clock of its program jump: every timer that was started before is
// due then, those of the message bus's client too.

namespace {

std::atomic<std::time_t> jumped{0};

} // namespace

// In the place of the system's function, for all of the program.
extern "C" int clock_gettime(const clockid_t clock, timespec* const time) noexcept {
    using Function = int(clockid_t, timespec*);
    static const auto system = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = system(clock, time);
    if (result == 0) time->tv_sec += jumped;
    return result;
}

namespace platform {
namespace {

using testing::ElementsAre;
using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::ScriptedService;

class AServiceThatTakesAnHour : public tests::SystemExtensionsTest {
protected:
    void SetUp() override {
        startService();
        service->setCalls(ScriptedService::Calls::areLeftOpen);
        submit("camera");
        waitForCalls(1);
    }

    /// Returns once everything that is due after the hour has happened.
    void waitAnHour() {
        jumped += 3600;
        service->setCalls(ScriptedService::Calls::areTaken);
        waitForAnswerToAnotherRequest();
    }
};

TEST_F(AServiceThatTakesAnHour, IsStillHeardWhenItAnswers) {
    waitAnHour();
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(1);
    service->take(0);
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(delegate->heard, ElementsAre("finished 0 for camera"));
}

TEST_F(AServiceThatTakesAnHour, MayTakeTheAnswerToItsQuestionThen) {
    service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    waitForCalls(2);
    waitAnHour();
    service->take(1);
    service->signal("Finished", {service->token(0), qlonglong{0}});
    waitForAnswers(2);
    EXPECT_EQ(delegate->heard.back(), "finished 0 for camera");
}

} // namespace
} // namespace platform
