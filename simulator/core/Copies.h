#pragma once

#include "simulator/core/CopyTransition.h"
#include "simulator/core/Outbox.h"
#include "simulator/core/State.h"

#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

/// The copies on the machine and the approvals that belong to them. Works on the state and the outbox that it was
/// given, which outlive it. Copies are named by their number.
class Copies {
public:
    Copies(State& state, Outbox& outbox);

    std::int64_t add(const Extension& extension, const Version& version, const std::string& application,
                     CopyState where);
    /// Takes the one step that the event means; an event that means nothing to the copy is a mistake of the caller.
    void happen(std::int64_t number, CopyEvent event);

    /// Null if there is none.
    const Copy* find(std::int64_t number) const;
    /// The enabled or disabled copy; null if there is none.
    const Copy* activated(const std::string& identifier) const;
    const Copy* waiting(const std::string& identifier) const;
    /// What a new copy would take the place of; null for nothing.
    const Copy* replaceable(const std::string& identifier) const;
    bool isInstalled(const std::string& identifier) const;
    /// Oldest first.
    std::vector<CopyRecord> report(const std::string& identifier) const;

    bool isApproved(const Extension& extension) const;
    void approve(const Extension& extension);

    /// Enables a staged or waiting copy and takes the others of its extension out of the way. Answers with the result
    /// of the request.
    std::int64_t activate(std::int64_t number, CopyEvent event);
    /// Lets a staged copy wait for the user; one that waited before is gone.
    void letWait(std::int64_t number);
    /// Takes away a copy that was never staged or activated; does nothing for another.
    void dropUnfinished(std::int64_t number);

    /// Begins to take away all installed copies, and forgets the approval. Answers with the result of the request.
    std::int64_t beginRemoval(const std::string& identifier);
    void endRemoval(const std::string& identifier);
    /// Makes way for a copy in that state.
    void clear(const std::string& identifier, CopyState forState);

    /// Takes away every copy and approval.
    void forgetAll();
    /// What a machine does with its copies when it goes down and comes up.
    void restart();

private:
    bool isInUse(const Copy& copy) const;
    /// Answers whether the old copy runs on until the restart.
    bool replace(std::int64_t number);
    std::vector<std::int64_t> numbers(const std::string& identifier, bool (*matches)(CopyState)) const;
    const Copy* first(const std::string& identifier, bool (*matches)(CopyState)) const;
    std::vector<std::int64_t> lingering() const;
    void tell(const Copy& copy, const std::string& text);

    State& state_;
    Outbox& outbox_;
};

/// What the copy's application hears of it.
CopyRecord recordOf(const Copy& copy);

} // namespace simulator
