#pragma once

#include "model/DriverLoadingViewModel.h"
#include "model/InstallStatus.h"
#include "platform/ui/View.h"

#include <memory>
#include <string>

namespace views {

/// The only screen: the status banner and a card for each extension except the base driver. It changes the model only
/// through the model's three operations.
struct DriverLoadingView {
    std::shared_ptr<model::DriverLoadingViewModel> viewModel;
    /// Does not count for the install status.
    std::string baseBundleId;

    /// Evaluated again after each change of the model.
    platform::ui::View body() const;

private:
    /// The screen for the current state of the model.
    platform::ui::View screen() const;
    model::InstallStatus installStatus() const;
    /// The bordered block of cards, centered below the banner.
    platform::ui::View cardBlock() const;
    platform::ui::View cardList() const;
    /// A card, with a divider below it unless it is the last record; nothing for the base driver.
    platform::ui::View row(std::size_t index) const;
    platform::ui::View card(const model::SysExtInfo& sei) const;
};

} // namespace views
