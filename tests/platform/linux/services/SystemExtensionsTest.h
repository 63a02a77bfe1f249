#pragma once

#include "RecordingDelegate.h"
#include "platform/linux/SimulatorManager.h"
#include "tests/support/EventLoop.h"
#include "tests/support/PrivateBus.h"
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
    std::weak_ptr<platform::OSSystemExtensionRequest> submit(const std::string& identifier) {
        const auto request = platform::OSSystemExtensionRequest::activationRequestForExtension(
            identifier, platform::DispatchQueue::main());
        request->setDelegate(delegate);
        manager.submitRequest(request);
        return request;
    }

    void startService() { service.emplace(bus.address()); }

    /// Submits "camera" and returns once the running service holds it.
    std::weak_ptr<platform::OSSystemExtensionRequest> submitAccepted() {
        startService();
        auto request = submit("camera");
        waitForCalls(1);
        return request;
    }

    void waitForCalls(const std::size_t count) {
        ASSERT_TRUE(processEventsUntil([&] { return service->calls().size() >= count; }));
    }

    void waitForAnswers(const std::size_t count) {
        ASSERT_TRUE(processEventsUntil([&] { return delegate->heard.size() >= count; }));
    }

    /// Returns once everything that the service sent so far has been handled: an answer to a new request has overtaken
    /// nothing.
    void waitForAnswerToAnotherRequest() {
        const auto another = std::make_shared<RecordingDelegate>();
        const auto request = platform::OSSystemExtensionRequest::activationRequestForExtension(
            "another", platform::DispatchQueue::main());
        request->setDelegate(another);
        const auto calls = service->calls().size();
        manager.submitRequest(request);
        waitForCalls(calls + 1);
        service->signal("Finished", {service->token(calls), qlonglong{0}});
        ASSERT_TRUE(processEventsUntil([&] { return !another->heard.empty(); }));
        EXPECT_THAT(another->heard, testing::ElementsAre("finished 0 for another"));
    }

    void expectOneFailure(const std::string& description) {
        waitForAnswers(1);
        ASSERT_EQ(delegate->errors.size(), 1U);
        EXPECT_EQ(delegate->errors[0].domain, platform::OSSystemExtensionErrorDomain);
        EXPECT_EQ(delegate->errors[0].code, 1);
        EXPECT_THAT(delegate->errors[0].localizedDescription, testing::HasSubstr(description));
    }

    PrivateBus bus;
    std::optional<ScriptedService> service;
    platform::SimulatorManager manager{bus.address()};
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>();
};

} // namespace tests
