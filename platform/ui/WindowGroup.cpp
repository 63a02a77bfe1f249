#include "platform/ui/WindowGroup.h"

#include <utility>

namespace platform::ui {

WindowGroup::WindowGroup(std::function<View()> content) : content_{std::move(content)} {
}

} // namespace platform::ui
