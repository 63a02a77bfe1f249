#pragma once

#include "Listener.h"
#include "platform/linux/SimulatorManager.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"
#include "tests/support/ScriptedService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>

namespace tests {

/// The manager in front of a service on a bus of the test's own. The service is in this process, on a connection of
/// its own, and says exactly what the test tells it to.
class SystemExtensionsTest : public testing::Test {
protected:
    std::weak_ptr<Listener::Request> submit(const std::string& identifier, const std::shared_ptr<Listener>& to) {
        const auto request = platform::OSSystemExtensionRequest::activationRequestForExtension(
            identifier, platform::DispatchQueue::main());
        request->setDelegate(to);
        manager.submitRequest(request);
        return request;
    }
    std::weak_ptr<Listener::Request> submit(const std::string& identifier) { return submit(identifier, listener); }

    void startService() { service.emplace(bus.address()); }

    /// Submits "camera" and returns once the running service holds it, and has treated the call as told.
    void submitTo(const ScriptedService::Calls calls) {
        startService();
        service->setCalls(calls);
        submit("camera");
        waitForCalls(1);
    }
    void submitAccepted() { submitTo(ScriptedService::Calls::areTaken); }

    void askForReplacement() {
        service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    }
    void finish() { service->signal("Finished", {service->token(0), qlonglong{0}}); }

    void waitForCalls(const std::size_t count) {
        ASSERT_TRUE(processEventsUntil([&] { return service->calls().size() >= count; }));
    }

    void waitForAnswers(const std::size_t count) {
        ASSERT_TRUE(processEventsUntil([&] { return listener->heard.size() >= count; }));
    }

    /// Returns once everything that the service sent so far has been handled: an answer to a new request has overtaken
    /// nothing.
    void waitForAnswerToAnotherRequest() {
        const auto another = std::make_shared<Listener>();
        const auto calls = service->calls().size();
        submit("another", another);
        waitForCalls(calls + 1);
        service->signal("Finished", {service->token(calls), qlonglong{0}});
        ASSERT_TRUE(processEventsUntil([&] { return !another->heard.empty(); }));
        EXPECT_THAT(another->heard, testing::ElementsAre("finished 0 for another"));
    }

    void expectOneFailure(const std::string& description) {
        waitForAnswers(1);
        ASSERT_EQ(listener->errors.size(), 1U);
        EXPECT_EQ(listener->errors[0].domain, platform::OSSystemExtensionErrorDomain);
        EXPECT_EQ(listener->errors[0].code, 1);
        EXPECT_THAT(listener->errors[0].localizedDescription, testing::HasSubstr(description));
    }

    PrivateBus bus;
    std::optional<ScriptedService> service;
    platform::SimulatorManager manager{bus.address()};
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};

} // namespace tests
