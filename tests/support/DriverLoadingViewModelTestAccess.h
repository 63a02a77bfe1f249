#pragma once

#include "model/DriverLoadingViewModel.h"

#include <string>
#include <utility>
#include <vector>

namespace model {

/// What a model keeps to itself, for tests. A write here is a published one.
class DriverLoadingViewModelTestAccess {
public:
    static DriverLoadingStateMachine::State state(const DriverLoadingViewModel& model) { return model.state_.get(); }
    static void setState(DriverLoadingViewModel& model, const DriverLoadingStateMachine::State state) {
        model.state_ = state;
    }

    /// Whether the banner says that a restart is needed.
    static void setNeedReboot(DriverLoadingViewModel& model, const bool needed) { model.need_reboot_ = needed; }

    static const std::string& lastError(const DriverLoadingViewModel& model) { return model.lastError_; }

    /// In place of the whole list; the identifiers need not be known ones.
    static void setRecords(DriverLoadingViewModel& model, std::vector<SysExtInfo> records) {
        model.sei_ = std::move(records);
    }
};

} // namespace model
