#pragma once

#include "model/DriverLoadingStateMachine.h"
#include "model/SysExtInfo.h"
#include "platform/ObservableObject.h"
#include "platform/Published.h"
#include "platform/SystemExtensions.h"

#include <memory>
#include <string>
#include <vector>

namespace model {

/// The application's one model: what is known of the managed extensions, and the operations on them.
///
/// It asks the operating system's extension service and is itself the delegate that hears every answer. No operation
/// waits or fails: what becomes of it shows in the records, later. Answers are taken as they come, in any order, and
/// are never tied back to their requests. Observers are told before each change of a published field. Main thread only.
class DriverLoadingViewModel final : public platform::ObservableObject,
                                     public platform::OSSystemExtensionRequestDelegate,
                                     public std::enable_shared_from_this<DriverLoadingViewModel> {
    /// Makes the constructor callable by create() alone.
    struct Creation {
        explicit Creation() = default;
    };

public:
    /// A model of extensions of which nothing is known yet. It asks nothing by itself.
    static std::shared_ptr<DriverLoadingViewModel> create();

    explicit DriverLoadingViewModel(Creation);

    /// The managed extensions; always the same ones in the same order.
    const std::vector<SysExtInfo>& sei() const { return sei_.get(); }
    /// Never changes: a restart that is due shows in a record's `reboot`.
    bool need_reboot() const { return need_reboot_.get(); }

    /// Asks what is installed of every managed extension.
    void enumerate();
    /// Asks for the extension with bundle identifier `id` to be activated, or upgraded, whatever is under way.
    void activateExt(const std::string& id);
    /// Asks for the extension with bundle identifier `id` to be deactivated and removed, whatever is under way.
    void deactivateExt(const std::string& id);

    platform::OSSystemExtensionReplacementAction
    requestActionForReplacingExtension(const platform::OSSystemExtensionRequest& request,
                                       const platform::OSSystemExtensionProperties& existing,
                                       const platform::OSSystemExtensionProperties& replacement) override;
    void requestNeedsUserApproval(const platform::OSSystemExtensionRequest& request) override;
    void requestDidFinishWithResult(const platform::OSSystemExtensionRequest& request,
                                    platform::OSSystemExtensionRequestResult result) override;
    void requestDidFailWithError(const platform::OSSystemExtensionRequest& request,
                                 const platform::Error& error) override;
    void requestFoundProperties(const platform::OSSystemExtensionRequest& request,
                                const std::vector<platform::OSSystemExtensionProperties>& properties) override;

private:
    friend class DriverLoadingViewModelTestAccess;

    void submit(std::shared_ptr<platform::OSSystemExtensionRequest> request);
    void move(LoadingTrigger trigger);
    void markCameraForReboot();

    platform::Published<DriverLoadingStateMachine::State> state_{*this, DriverLoadingStateMachine::State::blank};
    platform::Published<bool> need_reboot_{*this, false};
    platform::Published<std::vector<SysExtInfo>> sei_{*this, initialRecords()};
    std::string lastError_ = "An error has occured.";
};

} // namespace model
