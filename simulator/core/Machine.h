#pragma once

#include "simulator/core/Checks.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

/// The extension service of the simulated machine: copies are in Copies.cpp, requests in Requests.cpp, the steps that
/// requests take in Steps.cpp, and the user and the settings in Machine.cpp. Passive and deterministic: the caller
/// calls an input, or step() while it returns true; then stores state(); then sends what takeOutbox() returned. Only
/// advance() moves the clock.
class Machine {
public:
    /// Continues from the state and completes what was begun. The disk must outlive the machine.
    Machine(State state, const Disk& disk);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    const State& state() const { return state_; }
    const std::map<std::int64_t, Request>& requests() const { return requests_; }
    /// Every extension that has or had a copy, or is in a bundle that made a request or is in an Applications folder,
    /// by identifier.
    std::map<std::string, Extension> extensions() const;

    /// Takes the next step that is due; false if there was none.
    bool step();
    Outbox takeOutbox();
    /// The result of checking a seal from the outbox; ignored if its request has ended.
    void sealChecked(std::int64_t request, bool matches);

    // The applications.
    [[nodiscard]] Verdict submit(const Submission& submission);
    [[nodiscard]] Verdict answerReplacement(const std::string& client, const std::string& token, bool replace);
    void clientLeft(const std::string& client);

    // The user and the administrator. None of these enables what the profile forbids.
    [[nodiscard]] Verdict allow(const std::string& identifier);
    [[nodiscard]] Verdict deny(const std::string& identifier);
    [[nodiscard]] Verdict authorize(const std::string& identifier);
    [[nodiscard]] Verdict refuse(const std::string& identifier);
    [[nodiscard]] Verdict disable(const std::string& identifier);
    [[nodiscard]] Verdict enable(const std::string& identifier);

    // The machine.
    void restart();
    void reset();
    void resetAll();
    [[nodiscard]] Verdict install(const std::string& identifier, const Version& version, const std::string& state);
    [[nodiscard]] Verdict uninstall(const std::string& team, const std::string& identifier);
    [[nodiscard]] Verdict setApplicationsFolders(std::vector<std::string> folders);
    void setDeveloperMode(bool on);
    [[nodiscard]] Verdict setProfile(const std::string& contents);
    /// value: one that the switch takes.
    void setSwitch(Switch which, const std::string& value);
    [[nodiscard]] Verdict orderFault(const Fault& fault);
    void clearFaults();
    [[nodiscard]] Verdict advance(std::int64_t milliseconds);

private:
    using Is = bool (*)(CopyState);

    // Copies.cpp
    Copy& add(const Extension& extension, const Version& version, const std::string& application, CopyState where);
    void put(Copy& copy, CopyState to);
    void drop(std::int64_t number);
    Copy* first(const std::string& identifier, Is matches);
    std::vector<Copy*> all(const std::string& identifier, Is matches);
    Copy* replaceable(const std::string& identifier);
    bool isInUse(const Copy& copy) const;
    bool makeWay(Copy& copy);
    std::int64_t activate(Copy& copy);
    void letWait(Copy& copy);
    std::int64_t beginRemoval(const std::string& identifier);
    void endRemoval(const std::string& identifier);
    bool needsApproval(const Extension& extension) const;
    bool needsAdministrator(const Extension& extension) const;
    void finish(Copy& copy);
    void finishWhatWasBegun();
    /// Nothing if it is not one of extensions().
    std::optional<Extension> known(const std::string& identifier) const;

    // Requests.cpp
    using Condition = std::function<bool(const Request&)>;
    Request* find(const Condition& condition);
    Request* pending(const std::string& identifier);
    Request* asked(const std::string& identifier);
    Request* waitingFor(const Copy& copy);
    void goOn(Request& request, Stage to);
    void wait(Request& request, Stage stage);
    void say(const Request& request, AnswerBody body);
    void end(Request& request, AnswerBody body = {});
    void supersede(const std::string& identifier);
    Verdict refusalOf(const Submission& submission);
    void suffer(Request& request);
    void giveWay(Request& request);

    // Steps.cpp
    bool isDue(const Request& request) const;
    Subject subjectOf(const Request& request) const;
    bool knowsSeal(Request& request, Subject& subject);
    bool isOfAnotherOwner(const std::string& identifier, const BundleOnDisk& bundle);
    bool isForeign(const Request& request);
    void check(Request& request);
    void checkActivation(Request& request);
    void checkDeactivation(Request& request);
    void checkProperties(Request& request);
    void validate(Request& request);
    void stage(Request& request);
    void askUser(Request& request, std::int64_t copy);
    void remove(Request& request);

    // Machine.cpp
    void forgetEnded();
    void complete(Copy& copy);
    void removeWhatIsAuthorized();
    void removeTerminated();
    bool isDefault(Switch which) const { return state_.settings.isDefault(which); }
    std::optional<Refusal> policyAgainst(const Extension& extension) const;
    Refusal nothingOf(const std::string& identifier, const std::string& what) const;
    void tell(const std::string& identifier, const std::string& text, const std::string& application = {});

    State state_;
    const Disk& disk_;
    Outbox outbox_;
    std::map<std::int64_t, Request> requests_;
    std::int64_t lastTurn_ = 0;
};

} // namespace simulator
