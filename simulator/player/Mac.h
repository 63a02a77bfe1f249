#pragma once

#include "simulator/core/Verbs.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

namespace simulator::player {

/// Something could not be done, or is not as it should be; what() says why.
class NotDone : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The application that every new Mac has, and the default of every line.
inline constexpr auto sampleName = "Driver Manager";
inline constexpr auto sampleTeam = "KELVRA0001";

/// In /Applications, without faults, with two drivers and a camera extension, each 2.1/2105.
BundleOnDisk sampleApplication();

/// An extension without faults: by its file name a driver, a camera, or of no known category. Without a name, it is
/// called by its identifier.
ExtensionOnDisk extensionNamed(const std::string& fileName, const Version& version, const std::string& name = {});

/// Adds an extension to a bundle, or replaces the one with the same file name. If it is sealed, the defaults are the
/// application's team and, for a camera, a service in a group of its own.
void carry(BundleOnDisk& bundle, ExtensionOnDisk extension, bool isSealed = true);

/// What an application asks.
struct Ask {
    RequestKind kind = RequestKind::properties;
    std::string identifier;
    /// What the scenario calls the request.
    std::string request;
    /// Its answer to the replacement question; nothing: it answers with answer().
    std::optional<bool> replace = true;
};

/// Something that an application was told about one of its requests.
struct Heard {
    std::string request;
    std::string text;
};

/// A simulated Mac on which a scenario is played, with the applications that the scenario names. It starts with nothing
/// installed, every setting at its default, and /Applications as the only Applications folder. Each call returns when
/// nothing happens any more without another call, and may throw NotDone.
class Mac {
public:
    Mac() = default;
    Mac(const Mac&) = delete;
    Mac& operator=(const Mac&) = delete;
    virtual ~Mac() = default;

    /// Puts an application on the disk. Another one of that name quits and is removed first.
    void put(const std::string& application, const BundleOnDisk& bundle);
    const BundleOnDisk& bundleOf(const std::string& application) const { return applications_.at(application).bundle; }
    WordList applications() const;

    /// Starts the application if it does not run.
    void ask(const std::string& application, const Ask& ask);
    /// Answers a question that was left open.
    void answer(const std::string& application, const std::string& request, bool replace);
    void quit(const std::string& application);
    /// Performs a verb of the machine.
    void perform(const Saying& saying);

    /// Takes the oldest text that the application was told and that was not taken yet, if there is one.
    std::optional<Heard> hear(const std::string& application);
    /// "2.1/2105 activated enabled" of each copy of an extension, oldest first.
    virtual WordList copies(const std::string& identifier) = 0;
    /// "com.example.camera user" of each request that has not ended, oldest first.
    virtual WordList requests() = 0;

    /// Waits until the condition holds, as long as the command can still make it hold; returns whether it does.
    virtual bool await(const std::function<bool()>& holds) { return holds(); }
    /// The application under test, if there is one. A new start or a restart of the Mac stops it, too.
    virtual void startCommand() { throw withoutCommand(); }
    virtual void stopCommand() {}
    /// Waits for its end.
    virtual int statusOfCommand() { throw withoutCommand(); }

protected:
    struct Application {
        BundleOnDisk bundle;
        /// Its name on the bus; empty while it does not run.
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
    /// Returns its name on the bus.
    virtual std::string start(const std::string& application) = 0;
    virtual void end(const std::string& application) = 0;
    virtual void submit(const std::string& application, const std::string& token, const Ask& ask) = 0;
    virtual void reply(const std::string& application, const std::string& token, bool replace) = 0;
    virtual void act(const Saying& saying) = 0;
    /// Waits until nothing happens any more, and passes the answers to the applications.
    virtual void rest() = 0;

    void stop(const std::string& application);

    std::int64_t lastToken_ = 0;
};

/// A Mac in this process: the machine with its own clock, a disk in memory, and applications that only ask. A service
/// that crashes is back at once, with the stored state and without the requests.
std::unique_ptr<Mac> newCoreMac();

} // namespace simulator::player
