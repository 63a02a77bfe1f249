#pragma once

#include "platform/Bundle.h"
#include "platform/SystemExtensions.h"

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

// Fake services of the platform.

namespace platform::fake {

/// Runs the work in the main queue, and what it adds, in order until the queue is empty. Returns how many pieces of
/// work ran. Work runs only in this call.
std::size_t drainMainQueue();

/// Makes `bundle` the main bundle. References to the earlier one stay valid and see this one.
void setMainBundle(NSBundle bundle);
/// Sets a main bundle with this dictionary and with its images in `resourcePath`.
void setMainBundle(InfoDictionary dictionary, std::string resourcePath = {});
/// Sets a main bundle without a dictionary, for the reason `problem`.
void setMainBundleWithoutDictionary(std::string problem);

/// The lines logged since the last reset, oldest first.
const std::vector<std::string>& loggedLines();
void resetLog();
/// The lines printed since the last reset, oldest first, without line feeds.
const std::vector<std::string>& printedLines();

/// What a request asked for.
struct Submission {
    OSSystemExtensionRequest::Kind kind;
    std::string identifier;

    friend bool operator==(const Submission&, const Submission&) = default;
};

/// The shared manager of a process under test: it records each submission and answers as a test tells it.
///
/// Submissions are numbered from 0. An answer reaches the request's delegate in the next drainMainQueue(). Finish,
/// fail, and foundProperties are last answers: later ones are dropped, and so is every answer to a delegate that is
/// gone.
class SystemExtensions final : public OSSystemExtensionManager {
public:
    static SystemExtensions& shared();

    void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) override;

    /// Every submission since the last reset, in order.
    const std::vector<Submission>& submissions() const { return submissions_; }
    /// The request; null once its last answer was delivered.
    std::shared_ptr<OSSystemExtensionRequest> request(std::size_t submission) const;
    /// The latest submission of this kind and identifier that still waits for its last answer; throws
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

    /// The answers to the replacement questions, in order; cancel if the delegate was gone.
    const std::vector<OSSystemExtensionReplacementAction>& replacementAnswers() const { return replacementAnswers_; }

    /// Drops every submission, answer, and request.
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

/// A copy of an extension as the service would report it, including its description.
OSSystemExtensionProperties copyOf(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties enabledCopy(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties awaitingCopy(std::string identifier, std::string shortVersion, std::string version);
OSSystemExtensionProperties uninstallingCopy(std::string identifier, std::string shortVersion, std::string version);

/// Resets every fake service in its constructor and its destructor: nothing is queued, submitted, logged, or printed,
/// and the main bundle has no images and "2105" for "CFBundleVersion". Make it a member of the fixture.
class FreshServices {
public:
    FreshServices() { reset(); }
    ~FreshServices() { reset(); }

private:
    static void reset();
};

} // namespace platform::fake
