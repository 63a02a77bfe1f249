#pragma once

#include "simulator/core/Answer.h"
#include "simulator/core/CopyState.h"
#include "simulator/core/Disk.h"
#include "simulator/core/RequestKind.h"
#include "simulator/scenario/Deed.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace simulator::scenario {

/// What an application asks. Applications are called by the name that the scenario gives them.
struct Ask {
    /// What it says when it is asked whether the new copy may replace the old one; later: nothing until answer().
    enum class Reply { replace, cancel, later };

    std::string application;
    RequestKind kind = RequestKind::properties;
    std::string identifier;
    /// What the scenario calls the request.
    std::string request;
    Reply reply = Reply::replace;
};

/// The answer of an application to a question that it had left open.
struct AnswerQuestion {
    std::string application;
    std::string request;
    bool replace = true;
};

/// Something that an application was told about one of its requests.
struct Heard {
    std::string request;
    AnswerBody body;
};

/// A copy that is on the Mac.
struct CopyThere {
    Version version;
    CopyState state = CopyState::validating;

    friend bool operator==(const CopyThere&, const CopyThere&) = default;
};

/// A request that has not ended.
struct RequestThere {
    std::string identifier;
    std::string stage;
};

/// Something could not be done, or is not as it should be; what() says why.
class NotDone : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A simulated Mac on which a scenario is played. It begins with nothing installed, every setting at its default, and
/// /Applications as the only Applications folder. Each call returns when the Mac has come to rest: until the next one,
/// nothing happens any more. Each may throw NotDone.
class Mac {
public:
    Mac() = default;
    Mac(const Mac&) = delete;
    Mac& operator=(const Mac&) = delete;
    virtual ~Mac() = default;

    /// Puts an application on the disk, instead of the one of that name, which quits first.
    virtual void put(const std::string& application, const BundleOnDisk& bundle) = 0;

    /// Starts the application if it does not run.
    virtual void ask(const Ask& ask) = 0;
    virtual void answer(const AnswerQuestion& answer) = 0;
    virtual void quit(const std::string& application) = 0;
    virtual void perform(const Deed& deed) = 0;

    /// Takes the oldest answer that the application was given and this has not yielded yet; nothing if there is none.
    virtual std::optional<Heard> hear(const std::string& application) = 0;
    /// The copies of an extension, oldest first.
    virtual std::vector<CopyThere> copies(const std::string& identifier) = 0;
    /// Oldest first.
    virtual std::vector<RequestThere> requests() = 0;
};

} // namespace simulator::scenario
