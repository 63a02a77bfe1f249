#pragma once

#include "platform/Bundle.h"
#include "platform/SystemExtensions.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

// The services of the platform as a test says.

namespace platform::fake {

/// Runs what the main queue holds, in order, together with what that work adds, until the queue is empty. Returns how
/// many pieces of work ran. Work runs in this call alone.
std::size_t drainMainQueue();

/// Makes `bundle` the main bundle. References to the one before stay valid and see this one.
void setMainBundle(NSBundle bundle);
/// A main bundle of this dictionary, whose images lie in `resourcePath`.
void setMainBundle(InfoDictionary dictionary, std::string resourcePath = {});
/// A main bundle without a dictionary, for the reason `problem`.
void setMainBundleWithoutDictionary(std::string problem);

/// What went to the log since the last reset, oldest first.
const std::vector<std::string>& loggedLines();
void resetLog();
/// What went to standard output since the last reset, oldest first, without the line feeds.
const std::vector<std::string>& printedLines();

/// What a request asked for.
struct Submission {
    OSSystemExtensionRequest::Kind kind;
    std::string identifier;

    friend bool operator==(const Submission&, const Submission&) = default;
};

/// The shared manager of a process under test: it writes down each submission and answers as a test says.
///
/// A submission is named by its place in the order of submissions, from 0. An answer goes to the request's delegate in
/// the next drainMainQueue(), as the service's would arrive later. Finish, fail and foundProperties are last answers:
/// what a test answers after one is dropped, as is every answer to a delegate that is gone.
class SystemExtensions final : public OSSystemExtensionManager {
public:
    static SystemExtensions& shared();

    void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) override;

    /// Every submission since the last reset, in order.
    const std::vector<Submission>& submissions() const { return submissions_; }
    /// The request, as long as the manager keeps it: null once its last answer was delivered.
    std::shared_ptr<OSSystemExtensionRequest> request(std::size_t submission) const;
    /// How many requests have not had their last answer yet.
    std::size_t outstanding() const { return outstanding_.size(); }
    /// The latest submission of that kind and identifier that still waits for its last answer; throws
    /// std::out_of_range if there is none.
    std::size_t latest(OSSystemExtensionRequest::Kind kind, const std::string& identifier) const;

    void needsApproval(std::size_t submission);
    void askReplacement(std::size_t submission, OSSystemExtensionProperties existing,
                        OSSystemExtensionProperties replacement);
    void finish(std::size_t submission,
                OSSystemExtensionRequestResult result = OSSystemExtensionRequestResult::completed);
    void fail(std::size_t submission, Error error);
    /// Fails with a code of OSSystemExtensionErrorDomain.
    void fail(std::size_t submission, std::int64_t code, std::string description);
    void foundProperties(std::size_t submission, std::vector<OSSystemExtensionProperties> properties);

    /// What was answered to each question about a replacement, in order; cancel where the delegate was gone.
    const std::vector<OSSystemExtensionReplacementAction>& replacementAnswers() const { return replacementAnswers_; }

    /// Forgets every submission, answer and request.
    void reset();

private:
    struct Outstanding {
        std::shared_ptr<OSSystemExtensionRequest> request;
        bool hasLastAnswer = false;
    };
    using Answer = std::function<void(OSSystemExtensionRequestDelegate&, const OSSystemExtensionRequest&)>;

    bool waits(std::size_t submission) const;
    void answer(std::size_t submission, Answer answer);
    void answerLast(std::size_t submission, Answer answer);

    std::vector<Submission> submissions_;
    std::map<std::size_t, Outstanding> outstanding_;
    std::vector<OSSystemExtensionReplacementAction> replacementAnswers_;
};

/// A copy of an extension as the service would report it, its description included.
OSSystemExtensionProperties copyOf(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties enabledCopy(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties awaitingCopy(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties uninstallingCopy(std::string identifier, std::string shortVersion, std::string version);

/// Puts every fake service back to how a test finds it, when it is made and when it goes: nothing waits, was submitted,
/// logged or printed, and the main bundle has no images and the text 2105 for "CFBundleVersion". Hold one in the
/// fixture.
class FreshServices {
public:
    FreshServices() { reset(); }
    FreshServices(const FreshServices&) = delete;
    FreshServices& operator=(const FreshServices&) = delete;
    ~FreshServices() { reset(); }

private:
    static void reset();
};

} // namespace platform::fake
