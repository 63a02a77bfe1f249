#pragma once

#include "platform/SystemExtensions.h"

#include <functional>
#include <string>
#include <vector>

namespace tests {

/// Writes down what it is told, a line each.
class Listener final : public platform::OSSystemExtensionRequestDelegate {
public:
    using Request = platform::OSSystemExtensionRequest;
    using Properties = platform::OSSystemExtensionProperties;

    platform::OSSystemExtensionReplacementAction
    requestActionForReplacingExtension(const Request& request, const Properties&, const Properties&) override {
        hear("asked", request);
        return platform::OSSystemExtensionReplacementAction::replace;
    }
    void requestNeedsUserApproval(const Request& request) override { hear("approve", request); }
    void requestDidFinishWithResult(const Request& request,
                                    const platform::OSSystemExtensionRequestResult result) override {
        hear("finished " + std::to_string(static_cast<std::int64_t>(result)), request);
    }
    void requestDidFailWithError(const Request& request, const platform::Error& error) override {
        errors.push_back(error);
        hear("failed " + std::to_string(error.code), request);
    }
    void requestFoundProperties(const Request& request, const std::vector<Properties>& properties) override {
        found = properties;
        hear("found " + std::to_string(properties.size()), request);
    }

    /// "<what> for <identifier>", in order.
    std::vector<std::string> heard;
    std::vector<platform::Error> errors;
    std::vector<Properties> found;
    /// Called with each line.
    std::function<void(const std::string&)> onHearing;

private:
    void hear(const std::string& what, const Request& request) {
        heard.push_back(what + " for " + request.identifier());
        if (onHearing) onHearing(heard.back());
    }
};

} // namespace tests
