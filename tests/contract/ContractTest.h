#pragma once

#include "tests/support/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace contract {

using platform::OSSystemExtensionProperties;
using platform::OSSystemExtensionRequest;
using tests::Listener;
using tests::Record;

/// Identifiers of extensions; see Stage.
inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";
inline constexpr auto nobody = "com.kelvra.nobody";

/// One of the stand-ins for the operating system's extension service, on its own simulated machine.
///
/// The calling application contains `camera` and `driver`, both 2.1/2105, but not `nobody`. At first, nothing is
/// installed. A command that fails fails the test.
class Stage {
public:
    virtual ~Stage() = default;

    /// The manager to which the application submits its requests.
    virtual platform::OSSystemExtensionManager& manager() = 0;

    /// Runs a command of the simulator's command line, such as "allow" and an identifier.
    virtual void act(const std::vector<std::string>& words) = 0;

    /// Delivers all answers, and returns when the service has nothing left to do by itself. Answers are delivered only
    /// here.
    virtual void settle() = 0;
};

/// A new stage of this program's kind.
std::unique_ptr<Stage> makeStage();

using Kind = OSSystemExtensionRequest::Kind;

std::shared_ptr<OSSystemExtensionRequest> makeRequest(Kind kind, const std::string& identifier);

/// The behavior that all stand-ins share.
class TheExtensionService : public testing::Test {
protected:
    void act(const std::vector<std::string>& words) { stage->act(words); }
    /// Installs an enabled copy.
    void install(const std::string& identifier, const std::string& shortVersion, const std::string& version) {
        act({"install", identifier, shortVersion, version});
    }

    /// Submits a request whose listener has this name. Only the service keeps the request.
    std::weak_ptr<OSSystemExtensionRequest> submit(const std::string& name, Kind kind, const std::string& identifier);
    /// The same for each kind of request.
    std::weak_ptr<OSSystemExtensionRequest> activate(const std::string& name, const std::string& identifier = camera);
    std::weak_ptr<OSSystemExtensionRequest> deactivate(const std::string& name, const std::string& identifier = camera);
    std::weak_ptr<OSSystemExtensionRequest> query(const std::string& name, const std::string& identifier = camera);
    /// Destroys the listener.
    void drop(const std::string& name) { listeners.erase(name); }

    /// What the listeners have heard once the service has settled.
    const std::vector<std::string>& heard();
    /// The copies of an extension once the service has settled, oldest first, as "2.1 2105 enabled".
    std::vector<std::string> copies(const std::string& identifier = camera);

    /// The listeners, by name, write what they hear to one record.
    std::unique_ptr<Stage> stage = makeStage();
    Record record;
    std::map<std::string, std::shared_ptr<Listener>> listeners;
};

/// "2.1 2105 enabled"; without the flag if none is set.
std::string textOf(const OSSystemExtensionProperties& copy);

} // namespace contract
