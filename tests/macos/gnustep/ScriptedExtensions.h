#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace standin {

/// An object of Objective-C.
using Object = void*;

/// The extension service of the system, as a test plays it. It writes down each submission, which is named by its place
/// in their order, from 0, and answers as the test says, on the main queue. It keeps no request and no delegate alive,
/// and what it hands over is whatever the test gives it.
class ScriptedExtensions {
public:
    static ScriptedExtensions& shared();

    /// Each submission, "<kind> <identifier>", in order.
    const std::vector<std::string>& submissions() const { return submissions_; }
    /// The latest submission of that text; throws std::out_of_range if there is none.
    std::size_t latest(const std::string& submission) const;

    void needsApproval(std::size_t submission);
    void askReplacement(std::size_t submission, Object existing, Object replacement);
    void finish(std::size_t submission, long result);
    void fail(std::size_t submission, Object error);
    void found(std::size_t submission, Object array);

    /// What was answered to each question about a replacement.
    const std::vector<long>& replacementAnswers() const { return replacementAnswers_; }
    /// How many requests are alive.
    std::size_t alive() const { return alive_.size(); }

    void forget();

    // For the requests and the manager.
    void submitted(Object request);
    void gone(Object request);

private:
    template <typename Call>
    void answer(std::size_t submission, Call call);

    std::vector<std::string> submissions_;
    std::map<std::size_t, Object> alive_;
    std::vector<long> replacementAnswers_;
};

/// Objects for the service to hand over, autoreleased. A text that is null is nil.
Object makeProperties(const char* identifier, const char* shortVersion, const char* version, bool enabled = false,
                      bool awaiting = false, bool uninstalling = false);
/// Whatever it is.
void setVersion(Object properties, Object version);
Object makeError(const char* domain, long code, const char* description);
Object makeArray(const std::vector<Object>& members);
Object makeNumber(long value);
/// The domain of the service's errors.
const char* serviceDomain();

} // namespace standin
