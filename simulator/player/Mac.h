#pragma once

#include "simulator/core/Verbs.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>

namespace simulator::player {

/// Something could not be done, or is not as it should be; what() says why.
class NotDone : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The application that is on every Mac when a scenario begins, and that is meant where a line names none.
inline constexpr auto sampleName = "Driver Manager";
inline constexpr auto sampleTeam = "KELVRA0001";

/// In /Applications, sound, with two drivers and a camera extension, each 2.1/2105.
BundleOnDisk sampleApplication();

/// A sound extension, by its file name: a driver, or else a camera.
ExtensionOnDisk extensionNamed(const std::string& fileName, const Version& version);

/// Puts an extension into a bundle, instead of one of the same file name. Where it is sealed and names no team, it is
/// of the application's team; where a camera names no service, it has one in a group of its own.
void carry(BundleOnDisk& bundle, ExtensionOnDisk extension, bool isSealed = true);

/// What an application asks.
struct Ask {
    /// What it says when it is asked whether the new copy may replace the old one; later: nothing until answer().
    enum class Reply { replace, cancel, later };

    RequestKind kind = RequestKind::properties;
    std::string identifier;
    /// What the scenario calls the request.
    std::string request;
    Reply reply = Reply::replace;
};

/// Something that an application was told about one of its requests.
struct Heard {
    std::string request;
    std::string text;
};

/// A simulated Mac on which a scenario is played, with its applications, which are called by the names that the
/// scenario gives them. It begins with nothing installed, every setting at its default, and /Applications as the only
/// Applications folder. Each call returns when the Mac has come to rest: until the next one, nothing happens any more.
/// Each may throw NotDone. What is here is the same wherever it is played; a Mac of one kind does the rest.
class Mac {
public:
    Mac() = default;
    Mac(const Mac&) = delete;
    Mac& operator=(const Mac&) = delete;
    virtual ~Mac() = default;

    /// Puts an application on the disk, instead of the one of that name, which quits first.
    void put(const std::string& application, const BundleOnDisk& bundle);
    const BundleOnDisk& bundleOf(const std::string& application) const { return applications_.at(application).bundle; }
    WordList applications() const;

    /// Starts the application if it does not run.
    void ask(const std::string& application, const Ask& ask);
    /// Answers a question that was left open.
    void answer(const std::string& application, const std::string& request, bool replace);
    void quit(const std::string& application);
    /// Does what a line of a scenario says to the machine.
    void perform(const Saying& saying);

    /// Takes the oldest text that the application was told and this has not yielded yet; nothing if there is none.
    std::optional<Heard> hear(const std::string& application);
    /// "2.1/2105 activated enabled" of each copy of an extension, oldest first.
    virtual WordList copies(const std::string& identifier) = 0;
    /// "com.example.camera user" of each request that has not ended, oldest first.
    virtual WordList requests() = 0;

    /// Waits until that holds, as long as the command may bring it about; says whether it does.
    virtual bool await(const std::function<bool()>& holds) { return holds(); }
    /// The application under test, if there is one. A new start or a restart of the Mac stops it, too.
    virtual void startCommand() { throw withoutCommand(); }
    virtual void stopCommand() {}
    /// Waits for its end.
    virtual int statusOfCommand() { throw withoutCommand(); }

protected:
    struct Application {
        BundleOnDisk bundle;
        /// How the service calls it; empty while it does not run.
        std::string client;
        /// By token.
        std::map<std::string, Ask> asked;
        /// The tokens of the questions that it left open, by the name of the request.
        std::map<std::string, std::string> questions;
        std::deque<Heard> heard;
    };

    /// An application was told something about a request.
    void tell(const std::string& application, const std::string& token, const std::string& text);

    std::map<std::string, Application> applications_;

private:
    static NotDone withoutCommand() { return NotDone{"no command to test; use: sysextctl play FILE -- COMMAND"}; }

    virtual void write(const BundleOnDisk& bundle) = 0;
    virtual void remove(const BundleOnDisk& bundle) = 0;
    /// Answers how the service will call it.
    virtual std::string start(const std::string& application) = 0;
    virtual void end(const std::string& application) = 0;
    virtual void submit(const std::string& application, const std::string& token, const Ask& ask) = 0;
    virtual void reply(const std::string& application, const std::string& token, bool replace) = 0;
    virtual void act(const Saying& saying) = 0;
    /// Waits until nothing happens any more, and tells the applications what there is to tell.
    virtual void rest() = 0;

    void stop(const std::string& application);

    std::int64_t lastToken_ = 0;
};

} // namespace simulator::player
