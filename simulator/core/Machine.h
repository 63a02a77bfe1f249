#pragma once

#include "simulator/core/Catalog.h"
#include "simulator/core/Refusal.h"
#include "simulator/core/Requests.h"
#include "simulator/core/Steps.h"

#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

/// What an application asks.
struct Submission {
    /// Who asks; any text that names the client and no other.
    std::string client;
    /// What the client calls the request; no other open request of that client may be called the same.
    std::string token;
    /// The bundle that the client runs from; empty if it runs from none.
    std::string application;
    RequestKind kind = RequestKind::properties;
    std::string identifier;
};

/// The simulated machine's extension service, whole: what applications ask, what the person at the machine does, and
/// what becomes of it.
///
/// It is passive and deterministic. Whoever drives it calls an input, or step() while it answers true; then keeps
/// state(), then says what takeOutbox() held, which names the copies that changed. No answer comes out of the
/// submission itself, only out of later steps. Time stands still but for advance(). Not to be used from two threads.
class Machine {
public:
    /// Goes on where the state was left: what had been begun is completed. The disk must outlive the machine.
    Machine(State state, const Disk& disk);
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;

    const State& state() const { return state_; }
    const std::map<std::int64_t, Request>& requests() const { return requests_.all(); }
    /// Every extension that has or had a copy, or is carried by a bundle in an Applications folder; alphabetical.
    std::vector<std::string> identifiers() const { return catalog_.identifiers(); }
    bool knows(const std::string& identifier) const { return catalog_.find(identifier).has_value(); }

    /// Takes the next step that is due; false if there was none.
    bool step() { return steps_.take(); }
    Outbox takeOutbox();

    // The applications.
    [[nodiscard]] Verdict submit(const Submission& submission);
    [[nodiscard]] Verdict answerReplacement(const std::string& client, const std::string& token, bool replace);
    void clientLeft(const std::string& client);

    // The person at the machine. Nothing that the profile forbids is allowed, enabled or installed enabled.
    [[nodiscard]] Verdict allow(const std::string& identifier);
    [[nodiscard]] Verdict deny(const std::string& identifier);
    [[nodiscard]] Verdict authorize(const std::string& identifier);
    [[nodiscard]] Verdict refuse(const std::string& identifier);
    [[nodiscard]] Verdict disable(const std::string& identifier);
    [[nodiscard]] Verdict enable(const std::string& identifier);

    // The machine.
    void restart();
    /// Removes all copies, approvals, requests and faults; the settings stay.
    void reset();
    /// Puts a copy there. condition: see stateForCondition().
    [[nodiscard]] Verdict install(const std::string& identifier, const Version& version, const std::string& condition);
    /// Removes an extension without asking anyone. team: "-" for any.
    [[nodiscard]] Verdict uninstall(const std::string& team, const std::string& identifier);
    /// Absolute paths, without links and without a slash at the end.
    [[nodiscard]] Verdict setApplicationsFolders(std::vector<std::string> folders);
    void setDeveloperMode(bool on);
    /// A profile that allows what waits, or lets remove what an administrator was asked for, answers it. What it
    /// forbids is never enabled while it is there: an activation that is under way fails with its next step, what waits
    /// waits on, and what is enabled already runs on until it is switched off.
    void setProfile(Profile profile);
    /// Where the administrator's word is now given at once, it answers who waits for it.
    [[nodiscard]] Verdict setSwitch(const std::string& name, const std::string& value);
    [[nodiscard]] Verdict orderFault(const Fault& fault);
    [[nodiscard]] Verdict advance(std::int64_t milliseconds);

private:
    std::optional<Refusal> objectionTo(const Submission& submission);
    void orderFaultOf(Request& request);
    void makeWayFor(Request& request);
    void supersede(const std::string& identifier);

    void complete(std::int64_t copy);
    void authorizeAll();
    void finishWhatWasBegun();
    void finishStaging(const Copy& copy);
    std::optional<Refusal> policyAgainst(const Extension& extension) const;
    Refusal nothingOf(const std::string& identifier, const std::string& what) const;
    void tell(const std::string& identifier, const std::string& text);

    State state_;
    Outbox outbox_;
    Catalog catalog_;
    Copies copies_;
    Requests requests_;
    Steps steps_;
};

} // namespace simulator
