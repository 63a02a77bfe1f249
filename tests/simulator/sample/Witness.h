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
        Submission asked;
        /// It changes an extension, which was not its application's to change when it asked.
        bool isForeign = false;
        std::optional<Fault> fault;
        std::set<Cause> causes;
        bool wasAsked = false;
        bool neededApproval = false;
    };

    /// Looks at one kind of answer.
    struct Look;

    const Disk& disk_;
    /// By client and token.
    std::map<std::pair<std::string, std::string>, Open> open_;
    std::size_t answers_ = 0;
};

/// Looks at the copies and requests of a machine after each thing that happens to it. Keeps a record of its own of what
/// the user has approved, and finds fault with each copy that becomes enabled without the user or a management profile,
/// or against a profile.
class Watch {
public:
    /// The user has just approved the extension, or a copy was put there as if he had.
    void approved(const std::string& identifier);
    /// Fails the test if something is out of place.
    void look(const Machine& machine);

private:
    void lookAtEnabled(const Copy& copy, const Settings& settings) const;

    /// An approval lasts as long as there is an activated copy: a removal withdraws it.
    std::set<std::string> approved_;
    std::string justApproved_;
    /// The copies when they were last looked at.
    std::map<std::int64_t, Copy> before_;
};

} // namespace simulator
