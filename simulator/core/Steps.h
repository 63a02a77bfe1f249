#pragma once

#include "simulator/core/Checks.h"
#include "simulator/core/Disk.h"
#include "simulator/core/Requests.h"

#include <optional>

namespace simulator {

/// The steps that a request takes by itself, one at a time. Works on what it was given, which outlives it.
class Steps {
public:
    Steps(State& state, const Disk& disk, Outbox& outbox, Copies& copies, Requests& requests);

    /// Takes the next step that is due; false if there was none.
    bool take();
    /// Goes on with a deactivation that an administrator has authorised.
    void beginRemoval(Request& request);
    /// Whether it is an activation or deactivation by a program which does not carry the extension, or to which what is
    /// installed does not belong.
    bool isForeign(const Request& request) const;
    /// Whether the user must be asked before a staged copy is enabled.
    bool needsApproval(const Copy& copy) const;

    /// Whether every removal is authorised without asking.
    bool isAuthorized() const;

private:
    void check(Request& request);
    void checkAsOrdered(Request& request);
    void checkActivation(Request& request);
    void beginActivation(Request& request, const Subject& subject);
    void keep(Request& request, const Copy& copy, const Subject& subject);
    /// openly: what happens where no fault keeps the prompt away.
    void askTheUser(Request& request, RequestEvent openly);
    void checkDeactivation(Request& request);
    void checkProperties(Request& request);
    void validate(Request& request);
    void stage(Request& request);

    bool isOfAnotherOwner(const std::string& identifier, const BundleOnDisk& bundle) const;
    std::optional<BundleOnDisk> bundleOf(const Request& request) const;

    State& state_;
    const Disk& disk_;
    Outbox& outbox_;
    Copies& copies_;
    Requests& requests_;
};

} // namespace simulator
