#pragma once

#include "model/DriverLoadingViewModel.h"

#include <string>
#include <utility>
#include <vector>

namespace model {

/// The private state of a model. A write is published.
class DriverLoadingViewModelTestAccess {
public:
    static DriverLoadingStateMachine::State state(const DriverLoadingViewModel& model) { return model.state_.get(); }
    static void setState(DriverLoadingViewModel& model, const DriverLoadingStateMachine::State state) {
        model.state_ = state;
    }

    /// Whether the banner says that a restart is needed.
    static void setNeedReboot(DriverLoadingViewModel& model, const bool needed) { model.need_reboot_ = needed; }

    static const std::string& lastError(const DriverLoadingViewModel& model) { return model.lastError_; }

    /// Replaces the whole list. The identifiers may be unknown.
    static void setRecords(DriverLoadingViewModel& model, std::vector<SysExtInfo> records) {
        model.sei_ = std::move(records);
    }
};

} // namespace model
