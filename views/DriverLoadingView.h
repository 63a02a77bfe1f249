#pragma once

#include "model/DriverLoadingViewModel.h"
#include "model/InstallStatus.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>

namespace views {

/// The one screen: the status banner and a card for each extension but the base driver. Shows what the model holds
/// and changes it only through its three operations.
struct DriverLoadingView {
    std::shared_ptr<model::DriverLoadingViewModel> viewModel;
    /// Left out of what decides the install status.
    std::string baseBundleId;

    /// Evaluated anew after each change of the model.
    platform::ui::View body() const;

private:
    /// The screen as the model is now.
    platform::ui::View screen() const;
    model::InstallStatus installStatus() const;
    /// The bordered block, in the middle of what the banner leaves.
    platform::ui::View cardBlock() const;
    platform::ui::View cardList() const;
    /// Nothing for the base driver, else a card, with a divider below it unless its record is the last.
    platform::ui::View row(std::size_t index) const;
    platform::ui::View card(const model::SysExtInfo& sei) const;
};

} // namespace views
