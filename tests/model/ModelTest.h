#pragma once

#include "model/DriverLoadingViewModel.h"
#include "tests/support/DriverLoadingViewModelTestAccess.h"
#include "tests/support/FakeServices.h"

#include <array>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace model {

/// Every state of the model, in the order of declaration.
inline constexpr std::array allStates{
    DriverLoadingStateMachine::State::blank,        DriverLoadingStateMachine::State::unloaded,
    DriverLoadingStateMachine::State::activating,   DriverLoadingStateMachine::State::needsApproval,
    DriverLoadingStateMachine::State::activated,    DriverLoadingStateMachine::State::activatedUponReboot,
    DriverLoadingStateMachine::State::requestError, DriverLoadingStateMachine::State::deactivating,
};

/// The names of the states in messages.
inline const char* nameOf(const DriverLoadingStateMachine::State state) {
    constexpr std::array names{"Blank",         "Unloaded",    "Activating",
                               "NeedsApproval", "Activated",   "ActivatedUponReboot",
                               "RequestError",  "Deactivating"};
    return names.at(static_cast<std::size_t>(state));
}

inline const char* nameOf(const LoadingTrigger trigger) {
    constexpr std::array names{"Activate", "Deactivate", "NeedsApproval", "Completed", "AfterReboot", "Failed"};
    return names.at(static_cast<std::size_t>(trigger));
}

/// GoogleTest calls it to print a state.
inline void PrintTo(const DriverLoadingStateMachine::State state, std::ostream* out) {
    *out << nameOf(state);
}

/// Every field of a record on one line. Records have no equality.
inline std::string textOf(const SysExtInfo& record) {
    std::ostringstream text;
    text << record.id << " '" << record.state << "'";
    if (record.present) text << " present";
    if (record.enabled) text << " enabled";
    if (record.awaiting) text << " awaiting";
    if (record.reboot) text << " reboot";
    if (record.uninst) text << " uninst";
    text << " '" << record.version << "' " << record.iconName << " '" << record.driverName << "' " << record.intversion;
    return text.str();
}

/// The same for a whole list, in its order.
inline std::vector<std::string> textsOf(const std::vector<SysExtInfo>& records) {
    std::vector<std::string> texts;
    for (const auto& record : records)
        texts.push_back(textOf(record));
    return texts;
}

/// The identifiers of the three extensions that the model knows.
inline constexpr const char* base = "com.kelvra.driverkit.base";
inline constexpr const char* camera = "com.kelvra.ip-camera.cmio";
inline constexpr const char* network = "com.kelvra.driverkit.usb-to-poe";

/// Their positions in a list of records.
inline constexpr std::size_t basePosition = 0;
inline constexpr std::size_t cameraPosition = 1;
inline constexpr std::size_t networkPosition = 2;

/// The records of a new model, as textOf() prints them.
inline constexpr const char* initialBase = "com.kelvra.driverkit.base 'Not installed' 'n/a' Ethernet 'Old Driver' 0";
inline constexpr const char* initialCamera =
    "com.kelvra.ip-camera.cmio 'Not installed' 'n/a' VideoCamera 'Camera Driver' 0";
inline constexpr const char* initialNetwork =
    "com.kelvra.driverkit.usb-to-poe 'Not installed' 'n/a' Ethernet 'Network Driver' 0";
inline std::vector<std::string> initialTexts() {
    return {initialBase, initialCamera, initialNetwork};
}

/// A record with an unknown identifier and no known state.
inline SysExtInfo recordOf(std::string id, std::string driverName = {}) {
    SysExtInfo record;
    record.id = std::move(id);
    record.driverName = std::move(driverName);
    return record;
}

/// A new model with the fake services.
class ModelTest : public testing::Test {
protected:
    using State = DriverLoadingStateMachine::State;
    using Kind = platform::OSSystemExtensionRequest::Kind;
    using Result = platform::OSSystemExtensionRequestResult;
    using Copies = std::vector<platform::OSSystemExtensionProperties>;
    using Submissions = std::vector<platform::fake::Submission>;

    /// The service. It answers when a test tells it to. The model receives the answer in deliver().
    static platform::fake::SystemExtensions& service() { return platform::fake::SystemExtensions::shared(); }
    /// Runs the main queue until it is empty.
    static void deliver() { platform::fake::drainMainQueue(); }

    /// The private state of the model.
    State state() const { return DriverLoadingViewModelTestAccess::state(*model); }
    void setState(const State state) { DriverLoadingViewModelTestAccess::setState(*model, state); }
    const std::string& lastError() const { return DriverLoadingViewModelTestAccess::lastError(*model); }
    void setRecords(std::vector<SysExtInfo> records) {
        DriverLoadingViewModelTestAccess::setRecords(*model, std::move(records));
    }

    /// Every record.
    std::vector<std::string> texts() const { return textsOf(model->sei()); }
    /// One record.
    std::string text(const std::size_t position) const { return textOf(model->sei().at(position)); }
    const SysExtInfo& record(const std::size_t position) const { return model->sei().at(position); }

    /// Makes a request for properties, and delivers an answer with these copies.
    static void answer(DriverLoadingViewModel& asked, Copies copies) {
        const auto first = service().submissions().size();
        asked.enumerate();
        service().foundProperties(first, std::move(copies));
        deliver();
    }
    void answer(Copies copies) const { answer(*model, std::move(copies)); }

    /// The outcomes of an activation of the network driver, delivered.
    void finish(const Result result) const {
        model->activateExt(network);
        service().finish(service().latest(Kind::activation, network), result);
        deliver();
    }
    void fail(platform::Error error) const {
        model->activateExt(network);
        service().fail(service().latest(Kind::activation, network), std::move(error));
        deliver();
    }
    void fail(const std::int64_t code, std::string description) const {
        fail({"OSSystemExtensionErrorDomain", code, std::move(description)});
    }

    /// The requests of one pass over all extensions.
    static Submissions enumeration() {
        return {{Kind::properties, base}, {Kind::properties, camera}, {Kind::properties, network}};
    }
    /// What was submitted since there were `earlier` submissions.
    static Submissions submittedSince(const std::size_t earlier) {
        const auto& all = service().submissions();
        return {all.begin() + static_cast<std::ptrdiff_t>(earlier), all.end()};
    }

private:
    platform::fake::FreshServices services_;

protected:
    std::shared_ptr<DriverLoadingViewModel> model = DriverLoadingViewModel::create();
};

} // namespace model
