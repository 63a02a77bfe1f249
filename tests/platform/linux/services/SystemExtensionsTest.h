#pragma once

#include "platform/linux/SimulatorManager.h"
#include "tests/support/Listener.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"
#include "tests/support/ScriptedService.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tests {

/// The manager with a scripted service on a private bus. The service is in this process, on its own connection, and
/// sends exactly what the test tells it to.
class SystemExtensionsTest : public testing::Test {
protected:
    /// Submits an activation whose listener is named after the identifier. The result expires when the manager releases
    /// the request.
    std::weak_ptr<OSSystemExtensionRequest> submit(const std::string& identifier) {
        listeners.push_back(std::make_shared<Listener>(identifier, record));
        return submit(identifier, listeners.back());
    }
    std::weak_ptr<OSSystemExtensionRequest> submit(const std::string& identifier, const std::shared_ptr<Listener>& to) {
        const auto request =
            OSSystemExtensionRequest::activationRequestForExtension(identifier, platform::DispatchQueue::main());
        request->setDelegate(to);
        manager.submitRequest(request);
        return request;
    }

    /// Puts a service on the bus. A test may start it later, or start a second one.
    void startService() { service.emplace(bus.address()); }

    /// Submits "camera" and returns once the service has received it and has handled the call as told.
    void submitTo(const ScriptedService::Calls calls) {
        startService();
        service->setCalls(calls);
        submit("camera");
        waitForCalls(1);
    }
    void submitAccepted() { submitTo(ScriptedService::Calls::areTaken); }

    /// Answers of the service to the first request.
    void askForReplacement() {
        service->signal("ReplacementAsked", {service->token(0), onTheBus(CopyOnTheBus{}), onTheBus(CopyOnTheBus{})});
    }
    void finish() { service->signal("Finished", {service->token(0), qlonglong{0}}); }

    /// Returns once the service has received this many submissions in all.
    void waitForCalls(const std::size_t count) {
        ASSERT_TRUE(until([&] { return service->calls().size() >= count; }));
    }

    /// Returns once the listeners have heard this many answers in all.
    void waitForAnswers(const std::size_t count) {
        ASSERT_TRUE(until([&] { return record.lines.size() >= count; }));
    }

    /// Returns once everything that the service has sent is handled: after it, the answer to a new request is handled,
    /// too.
    void waitForAnswerToAnotherRequest() {
        Record apart;
        const auto another = std::make_shared<Listener>("another", apart);
        const auto calls = service->calls().size();
        submit("another", another);
        waitForCalls(calls + 1);
        service->signal("Finished", {service->token(calls), qlonglong{0}});
        ASSERT_TRUE(until([&] { return !apart.lines.empty(); }));
        EXPECT_THAT(apart.lines, testing::ElementsAre("another finished 0"));
    }

    /// Waits for an answer. It must be a failure with the code "unknown" whose description contains the text.
    void expectOneFailure(const std::string& description) {
        waitForAnswers(1);
        ASSERT_EQ(record.errors.size(), 1U);
        EXPECT_EQ(record.errors[0].domain, platform::OSSystemExtensionErrorDomain);
        EXPECT_EQ(record.errors[0].code, 1);
        EXPECT_THAT(record.errors[0].localizedDescription, testing::HasSubstr(description));
    }

    /// The bus comes first, so that it ends after the service and the manager.
    PrivateBus bus;
    std::optional<ScriptedService> service;
    platform::SimulatorManager manager{bus.address()};
    /// What the listeners have heard. Each is named after its request's identifier.
    Record record;
    std::vector<std::shared_ptr<Listener>> listeners;
};

} // namespace tests
