#pragma once

#include "platform/SystemExtensions.h"

#include <functional>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tests {

using platform::OSSystemExtensionProperties;
using platform::OSSystemExtensionReplacementAction;
using platform::OSSystemExtensionRequest;

/// What the listeners of a test heard, in order.
struct Record {
    /// "<listener> finished 0" and so on.
    std::vector<std::string> lines;
    /// The thread and the request of each line.
    std::vector<std::thread::id> threads;
    std::vector<const OSSystemExtensionRequest*> requests;

    /// The error of each failure, in order.
    std::vector<platform::Error> errors;
    /// The copies found last.
    std::vector<OSSystemExtensionProperties> copies;
    /// The two copies of the last question.
    OSSystemExtensionProperties existing;
    OSSystemExtensionProperties replacement;

    /// The listeners that cancel a replacement.
    std::set<std::string> cancelling;
    /// Called after each line, from inside the answer.
    std::function<void()> onLine = [] {};
};

/// The delegate of a request. It records what it hears.
class Listener final : public platform::OSSystemExtensionRequestDelegate {
public:
    /// The record outlives every call.
    Listener(std::string name, Record& record) : name_{std::move(name)}, record_{record} {}

    OSSystemExtensionReplacementAction
    requestActionForReplacingExtension(const OSSystemExtensionRequest& request,
                                       const OSSystemExtensionProperties& existing,
                                       const OSSystemExtensionProperties& replacement) override {
        record_.existing = existing;
        record_.replacement = replacement;
        hear(request, "is asked");
        return record_.cancelling.count(name_) > 0 ? OSSystemExtensionReplacementAction::cancel
                                                   : OSSystemExtensionReplacementAction::replace;
    }
    void requestNeedsUserApproval(const OSSystemExtensionRequest& request) override { hear(request, "needs approval"); }
    void requestDidFinishWithResult(const OSSystemExtensionRequest& request,
                                    const platform::OSSystemExtensionRequestResult result) override {
        hear(request, "finished " + std::to_string(static_cast<std::int64_t>(result)));
    }
    void requestDidFailWithError(const OSSystemExtensionRequest& request, const platform::Error& error) override {
        record_.errors.push_back(error);
        hear(request, "failed " + std::to_string(error.code));
    }
    void requestFoundProperties(const OSSystemExtensionRequest& request,
                                const std::vector<OSSystemExtensionProperties>& properties) override {
        record_.copies = properties;
        hear(request, "found " + std::to_string(properties.size()));
    }

private:
    void hear(const OSSystemExtensionRequest& request, const std::string& what) {
        record_.lines.push_back(name_ + " " + what);
        record_.threads.push_back(std::this_thread::get_id());
        record_.requests.push_back(&request);
        record_.onLine();
    }

    std::string name_;
    Record& record_;
};

} // namespace tests
