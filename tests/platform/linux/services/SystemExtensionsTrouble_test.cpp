#include "SystemExtensionsTest.h"

#include <atomic>
#include <ctime>
#include <dlfcn.h>

// Failures of the service and of the bus, and long waits.

namespace {

std::atomic<std::time_t> jumped{0};

} // namespace

// Replaces the system's function in the whole program: a test cannot wait for an hour, but it can set the clock
// forward. Then every timer that was started before is due, also in the D-Bus client.
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
using testing::HasSubstr;
using testing::IsEmpty;
using tests::ScriptedService;
using tests::until;
using Calls = ScriptedService::Calls;

class ASystemExtensionRequestInTrouble : public tests::SystemExtensionsTest {};

TEST_F(ASystemExtensionRequestInTrouble, FailsLaterAndNotInsideItsSubmissionWhereThereIsNoBus) {
    for (const auto* const address : {"", "nonsense", "unix:path=/nonexistent/bus"}) {
        record = {};
        SimulatorManager elsewhere{address};
        const auto request = OSSystemExtensionRequest::activationRequestForExtension("camera", DispatchQueue::main());
        const auto listener = std::make_shared<tests::Listener>("camera", record);
        request->setDelegate(listener);
        elsewhere.submitRequest(request);
        EXPECT_THAT(record.lines, IsEmpty());
        expectOneFailure("There is no session bus");
    }
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereThereIsNoServiceOrItDoesNotStart) {
    submit("camera");
    EXPECT_THAT(record.lines, IsEmpty());
    expectOneFailure("The extension service did not take the request");
    record = {};
    bus.makeActivatable("com.kelvra.Simulator1", "/bin/false");
    submit("camera");
    expectOneFailure("The extension service did not take the request");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereTheServiceRefusesIt) {
    submitTo(Calls::areRefused);
    expectOneFailure("too many requests");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhereTheServiceRefusesTheAnswerToItsQuestion) {
    submitAccepted();
    service->setCalls(Calls::areRefused);
    askForReplacement();
    waitForAnswers(2);
    EXPECT_THAT(record.lines, ElementsAre("camera is asked", "camera failed 1"));
    EXPECT_THAT(record.errors.at(0).localizedDescription, HasSubstr("too many requests"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceDiesBeforeItAcceptsIt) {
    submitTo(Calls::areLeftOpen);
    service->die();
    expectOneFailure("The extension service did not take the request");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenTheServiceDiesBeforeItAnswers) {
    submitAccepted();
    submit("network");
    waitForCalls(2);
    service->signal("NeedsApproval", {service->token(0)});
    waitForAnswers(1);
    service->die();
    waitForAnswers(3);
    EXPECT_THAT(record.lines, ElementsAre("camera needs approval", "camera failed 1", "network failed 1"));
    EXPECT_THAT(record.errors[0].localizedDescription, HasSubstr("went away before it answered"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsWhenAServiceThatGaveUpItsNameAcceptsIt) {
    submitTo(Calls::areLeftOpen);
    service->releaseName();
    service->take(0);
    expectOneFailure("went away before it answered");
}

TEST_F(ASystemExtensionRequestInTrouble, FailsOnceWhenTheServiceDiesDuringAQuestion) {
    submitTo(Calls::areLeftOpen);
    askForReplacement();
    waitForCalls(2);
    service->die();
    waitForAnswers(2);
    QCoreApplication::processEvents();
    EXPECT_THAT(record.lines, ElementsAre("camera is asked", "camera failed 1"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsOnceWhenTheBusGoes) {
    submitAccepted();
    submit("network");
    bus.stop();
    waitForAnswers(2);
    EXPECT_THAT(record.lines, ElementsAre("camera failed 1", "network failed 1"));
}

TEST_F(ASystemExtensionRequestInTrouble, FailsOnceWhenTheBusIsGoneUnnoticed) {
    submitAccepted();
    finish();
    waitForAnswers(1);
    bus.stop();
    submit("network");
    waitForAnswers(2);
    EXPECT_THAT(record.lines, ElementsAre("camera finished 0", "network failed 1"));
}

TEST_F(ASystemExtensionRequestInTrouble, IsNotAskedAgainOnceTheServiceIsBack) {
    submitAccepted();
    service->die();
    waitForAnswers(1);
    startService();
    submit("network");
    waitForCalls(1);
    finish();
    waitForAnswers(2);
    EXPECT_EQ(record.lines.back(), "network finished 0");
    EXPECT_EQ(service->calls().size(), 1U) << "what failed was asked again";
}

TEST_F(ASystemExtensionRequestInTrouble, OfALaterServiceIsNotAnsweredByAnEarlierOne) {
    submitAccepted();
    service->releaseName();
    waitForAnswers(1);
    ScriptedService later{bus.address()};
    submit("network");
    ASSERT_TRUE(until([&] { return !later.calls().empty(); }));
    service->signal("Finished", {later.token(0), qlonglong{0}});
    later.signal("Finished", {later.token(0), qlonglong{1}});
    waitForAnswers(2);
    EXPECT_EQ(record.lines.back(), "network finished 1");
}

TEST_F(ASystemExtensionRequestInTrouble, SucceedsAgainOnceTheBusIsBack) {
    submitAccepted();
    bus.stop();
    waitForAnswers(1);
    submit("camera");
    waitForAnswers(2);
    EXPECT_THAT(record.lines, ElementsAre("camera failed 1", "camera failed 1"));
    service.reset();
    bus.start();
    submitAccepted();
    finish();
    waitForAnswers(3);
    EXPECT_EQ(record.lines.back(), "camera finished 0");
}

// No time limit ends a request.

class AServiceThatTakesAnHour : public tests::SystemExtensionsTest {
protected:
    /// Returns once every timer that is due after the hour has fired.
    void waitAnHour() {
        jumped += 3600;
        service->setCalls(Calls::areTaken);
        waitForAnswerToAnotherRequest();
    }
};

TEST_F(AServiceThatTakesAnHour, CanStillAnswer) {
    submitTo(Calls::areLeftOpen);
    waitAnHour();
    finish();
    waitForAnswers(1);
    service->take(0);
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, ElementsAre("camera finished 0"));
}

TEST_F(AServiceThatTakesAnHour, CanStillAcceptTheAnswerToItsQuestion) {
    submitAccepted();
    service->setCalls(Calls::areLeftOpen);
    askForReplacement();
    waitForCalls(2);
    waitAnHour();
    service->take(1);
    finish();
    waitForAnswers(2);
    EXPECT_THAT(record.lines, ElementsAre("camera is asked", "camera finished 0"));
}

} // namespace
} // namespace platform
