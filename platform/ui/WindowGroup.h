#pragma once

#include "platform/ui/View.h"

#include <functional>

namespace platform::ui {

/// The scene of an application: a window that shows what the builder yields. The builder is called each time the
/// platform asks the scene for its content, and only then; a change of an observed object does not call it.
class WindowGroup {
public:
    explicit WindowGroup(std::function<View()> content);

    View content() const { return content_(); }

private:
    std::function<View()> content_;
};

} // namespace platform::ui
