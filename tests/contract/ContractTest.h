#pragma once

#include "tests/contract/Listener.h"
#include "tests/contract/Stage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace contract {

using Kind = OSSystemExtensionRequest::Kind;

/// What any extension service does, whichever stands in for it.
class TheExtensionService : public testing::Test {
protected:
    /// Submits a request whose listener has that name. Only the service keeps the request.
    std::weak_ptr<OSSystemExtensionRequest> submit(const std::string& name, Kind kind, const std::string& identifier);
    std::weak_ptr<OSSystemExtensionRequest> activate(const std::string& name, const std::string& identifier = camera);
    std::weak_ptr<OSSystemExtensionRequest> deactivate(const std::string& name, const std::string& identifier = camera);
    /// Deactivates it, and an administrator agrees.
    void remove(const std::string& name, const std::string& identifier = camera);
    std::weak_ptr<OSSystemExtensionRequest> query(const std::string& name, const std::string& identifier = camera);
    /// The listener is gone.
    void drop(const std::string& name) { listeners.erase(name); }

    /// Everything that was heard by the time that the service has settled.
    const std::vector<std::string>& heard();
    /// The copies of an extension once the service has settled, oldest first, as "2.1 2105 enabled".
    std::vector<std::string> copies(const std::string& identifier = camera);

    std::unique_ptr<Stage> stage = makeStage();
    Record record;
    std::map<std::string, std::shared_ptr<Listener>> listeners;
};

/// "2.1 2105 enabled"; an extension that is neither enabled, awaiting nor uninstalling ends with its build.
std::string textOf(const OSSystemExtensionProperties& copy);

} // namespace contract
