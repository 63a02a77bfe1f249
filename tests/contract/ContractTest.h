#pragma once

#include "tests/support/Listener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace contract {

using platform::OSSystemExtensionProperties;
using platform::OSSystemExtensionRequest;
using tests::Listener;
using tests::Record;

/// Identifiers of extensions; see Stage for who carries them.
inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";
inline constexpr auto nobody = "com.kelvra.nobody";

/// One of the stand-ins for the operating system's extension service, on a machine of its own.
///
/// The application that asks carries `camera` and `driver`, both 2.1/2105, and no `nobody`. At first nothing is
/// installed. What cannot be done fails the test.
class Stage {
public:
    Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    virtual ~Stage() = default;

    /// The service's manager, which the application submits its requests to.
    virtual platform::OSSystemExtensionManager& manager() = 0;

    /// Does what the words say, which are those of the command line: "install" and what follows it, "allow" and so on.
    virtual void act(const std::vector<std::string>& words) = 0;

    /// Returns when the service has nothing left to do by itself, and all that it said has been delivered. Nothing is
    /// delivered but in here.
    virtual void settle() = 0;
};

/// The stage of this program, as new.
std::unique_ptr<Stage> makeStage();

/// A stand-in that decides nothing: it says what it is told. A submission is named by its place in their order, from 0.
class PlayedService {
public:
    PlayedService() = default;
    PlayedService(const PlayedService&) = delete;
    PlayedService& operator=(const PlayedService&) = delete;
    virtual ~PlayedService() = default;

    /// What is submitted to.
    virtual platform::OSSystemExtensionManager& manager() = 0;
    // Each of these is delivered in a later deliver().
    virtual void finish(std::size_t submission, std::int64_t result) = 0;
    virtual void findNothing(std::size_t submission) = 0;
    /// Delivers what was said, and returns when `holds` does.
    virtual void deliver(const std::function<bool()>& holds) = 0;
};

/// The played service of this program, as new.
std::unique_ptr<PlayedService> makePlayedService();

using Kind = OSSystemExtensionRequest::Kind;

std::shared_ptr<OSSystemExtensionRequest> makeRequest(Kind kind, const std::string& identifier);

/// What any extension service does, whichever stands in for it.
class TheExtensionService : public testing::Test {
protected:
    void act(const std::vector<std::string>& words) { stage->act(words); }
    /// Puts an enabled copy there.
    void install(const std::string& identifier, const std::string& shortVersion, const std::string& version) {
        act({"install", identifier, shortVersion, version});
    }

    /// Submits a request whose listener has that name. Only the service keeps the request.
    std::weak_ptr<OSSystemExtensionRequest> submit(const std::string& name, Kind kind, const std::string& identifier);
    /// The same for each kind of request.
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

    /// What the listeners hear is in one record, and they are found by their names.
    std::unique_ptr<Stage> stage = makeStage();
    Record record;
    std::map<std::string, std::shared_ptr<Listener>> listeners;
};

/// "2.1 2105 enabled"; an extension that is neither enabled, awaiting nor uninstalling ends with its build.
std::string textOf(const OSSystemExtensionProperties& copy);

} // namespace contract
