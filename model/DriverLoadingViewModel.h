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

/// The application's one model: the managed extensions and the operations on them.
///
/// It submits requests to the operating system's extension service and is the delegate of all of them. Operations do
/// not block and do not fail; their outcome appears in the records later. Answers can arrive in any order and are not
/// matched to requests. Observers are notified before each change of a published field. Main thread only.
class DriverLoadingViewModel final : public platform::ObservableObject,
                                     public platform::OSSystemExtensionRequestDelegate,
                                     public std::enable_shared_from_this<DriverLoadingViewModel> {
    /// Only create() can call the constructor.
    struct Creation {
        explicit Creation() = default;
    };

public:
    /// A model with initial records. It submits nothing by itself.
    static std::shared_ptr<DriverLoadingViewModel> create();

    explicit DriverLoadingViewModel(Creation);

    /// The managed extensions; always the same ones in the same order.
    const std::vector<SysExtInfo>& sei() const { return sei_.get(); }
    /// Never changes. A record's `reboot` says that a restart is needed.
    bool need_reboot() const { return need_reboot_.get(); }

    /// Requests the properties of every managed extension.
    void enumerate();
    /// Requests activation or upgrade of the extension with bundle identifier `id`, even if other requests are open.
    void activateExt(const std::string& id);
    /// Requests removal of the extension with bundle identifier `id`, even if other requests are open.
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
