#include "model/DriverLoadingViewModel.h"

#include "model/FailureMessages.h"
#include "model/PropertyReconciliation.h"
#include "platform/FatalError.h"
#include "platform/Log.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace model {

using platform::DispatchQueue;
using platform::Error;
using platform::OSSystemExtensionManager;
using platform::OSSystemExtensionProperties;
using platform::OSSystemExtensionReplacementAction;
using platform::OSSystemExtensionRequest;
using platform::OSSystemExtensionRequestResult;

namespace {

constexpr std::size_t cameraPosition = 1;

} // namespace

std::shared_ptr<DriverLoadingViewModel> DriverLoadingViewModel::create() {
    return std::make_shared<DriverLoadingViewModel>(Creation{});
}

DriverLoadingViewModel::DriverLoadingViewModel(Creation) {
}

void DriverLoadingViewModel::enumerate() {
    const auto records = sei_.get();
    for (const auto& record : records) {
        submit(OSSystemExtensionRequest::propertiesRequestForExtension(record.id, DispatchQueue::main()));
    }
}

void DriverLoadingViewModel::activateExt(const std::string& id) {
    platform::log("Sysex identifier %@", {id});
    submit(OSSystemExtensionRequest::activationRequestForExtension(id, DispatchQueue::main()));
    move(LoadingTrigger::activate);
}

void DriverLoadingViewModel::deactivateExt(const std::string& id) {
    submit(OSSystemExtensionRequest::deactivationRequestForExtension(id, DispatchQueue::main()));
    move(LoadingTrigger::deactivate);
}

OSSystemExtensionReplacementAction
DriverLoadingViewModel::requestActionForReplacingExtension(const OSSystemExtensionRequest& /*request*/,
                                                           const OSSystemExtensionProperties& existing,
                                                           const OSSystemExtensionProperties& replacement) {
    platform::log("Sysex replacement request: %@ %@", {existing.description, replacement.description});
    move(LoadingTrigger::activate);
    return OSSystemExtensionReplacementAction::replace;
}

void DriverLoadingViewModel::requestNeedsUserApproval(const OSSystemExtensionRequest& /*request*/) {
    platform::log("Sysex request needs user approval.");
    move(LoadingTrigger::needsApproval);
    enumerate();
}

void DriverLoadingViewModel::requestDidFinishWithResult(const OSSystemExtensionRequest& /*request*/,
                                                        const OSSystemExtensionRequestResult result) {
    platform::log("Sysex request finished: %d", {std::to_string(static_cast<std::int64_t>(result))});
    switch (result) {
    case OSSystemExtensionRequestResult::willCompleteAfterReboot:
        move(LoadingTrigger::afterReboot);
        markCameraForReboot();
        break;
    case OSSystemExtensionRequestResult::completed:
        move(LoadingTrigger::completed);
        break;
    default:
        lastError_ = "Request completed.";
        move(LoadingTrigger::failed);
    }
    enumerate();
}

void DriverLoadingViewModel::requestDidFailWithError(const OSSystemExtensionRequest& /*request*/, const Error& error) {
    if (error.domain != platform::OSSystemExtensionErrorDomain) return;
    lastError_ = failureMessage(error.code);
    platform::log("Sysex request failed: %@ (%@)", {error.localizedDescription, lastError_});
    move(LoadingTrigger::failed);
}

void DriverLoadingViewModel::requestFoundProperties(const OSSystemExtensionRequest& /*request*/,
                                                    const std::vector<OSSystemExtensionProperties>& properties) {
    reconcile(properties, sei_);
}

void DriverLoadingViewModel::submit(std::shared_ptr<OSSystemExtensionRequest> request) {
    request->setDelegate(weak_from_this());
    OSSystemExtensionManager::sharedManager().submitRequest(std::move(request));
}

void DriverLoadingViewModel::move(const LoadingTrigger trigger) {
    state_ = next(state_.get(), trigger);
}

/// Marks the camera's record, whichever extension the finished request was for.
void DriverLoadingViewModel::markCameraForReboot() {
    if (sei_.get().size() <= cameraPosition) {
        platform::fatalError("Index 1 out of range of " + std::to_string(sei_.get().size()) + " extension records");
    }
    sei_.modify([](auto& records) { records[cameraPosition].reboot = true; });
}

} // namespace model
