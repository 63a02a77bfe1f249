#pragma once

#include "simulator/core/Machine.h"

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace simulator {

/// What someone did that lets a request go on, or ends it.
enum class Cause { allowed, denied, replaced, canceled, authorized, refused, superseded, withdrawn };

/// Sees everything that is done to a machine, and finds fault with each answer that nothing has led to.
class Witness {
public:
    /// The disk that the machine reads; it must outlive the witness.
    explicit Witness(const Disk& disk) : disk_{disk} {}

    /// A request was taken.
    void submitted(const Submission& submission, const Machine& machine);
    /// Something happened to the open requests of an extension; of all where the identifier is empty.
    void happened(Cause cause, const std::string& identifier = {});
    void happenedTo(const std::string& client, const std::string& token, Cause cause);
    void clientLeft(const std::string& client);
    /// No request that is open will be answered any more.
    void forgetAll() { open_.clear(); }

    /// Fails the test if the answer is out of place. The machine is as it was when it gave the answer.
    void hear(const Answer& answer, const Machine& machine);
    std::size_t answers() const { return answers_; }

private:
    struct Open {
        RequestKind kind = RequestKind::properties;
        std::string identifier;
        std::string application;
        /// It changes an extension, which was not its application's to change when it asked.
        bool isForeign = false;
        std::optional<Fault> fault;
        std::set<Cause> causes;
        bool wasAsked = false;
        bool neededApproval = false;
    };
    using Name = std::pair<std::string, std::string>;

    /// Of what is open for an extension, a later request ends the earlier, or the other way round; whose client has
    /// left is in the way still.
    void contend(Open& later, const Machine& machine);

    /// Looks at one kind of answer.
    struct Look;

    const Disk& disk_;
    std::map<Name, Open> open_;
    std::size_t answers_ = 0;
};

/// Keeps a record of its own of what the user has approved, and finds fault with each copy that becomes enabled without
/// the user or a management profile, or against a profile.
class Consent {
public:
    /// The user has just approved the extension, or a copy was put there as if he had.
    void given(const std::string& identifier);
    /// Fails the test if something is out of place. To be called after each thing that happens to the machine.
    void look(const Machine& machine);

private:
    void lookAt(const Copy& copy, const Settings& settings) const;
    bool covers(const Copy& copy, const Settings& settings) const;

    /// An approval lasts as long as there is an activated copy: a removal withdraws it.
    std::set<std::string> approved_;
    std::string justApproved_;
    /// The states of the copies when they were last looked at.
    std::map<std::int64_t, CopyState> before_;
};

} // namespace simulator
