#pragma once

#include "model/InstallStatus.h"
#include "platform/ui/View.h"

#include <string>

namespace views {

/// The banner: the status in one sentence.
struct StatusView {
    model::InstallStatus installStatus;
    /// One for each status, in the order: nothing is installed, all are enabled, approval is awaited.
    std::string notActivatedText;
    std::string activatedText;
    std::string orangeText;

    platform::ui::View body() const;
};

} // namespace views
