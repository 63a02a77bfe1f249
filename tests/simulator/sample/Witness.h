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

    /// A request was taken. Of what is open for its extension, a later one may end the earlier, and the other way
    /// round.
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
        std::optional<Fault> fault;
        std::set<Cause> causes;
        bool wasAsked = false;
        bool neededApproval = false;
    };
    using Name = std::pair<std::string, std::string>;

    /// Looks at one kind of answer.
    struct Look;

    const Disk& disk_;
    std::map<Name, Open> open_;
    std::size_t answers_ = 0;
};

} // namespace simulator
