#include "platform/ui/SceneWriter.h"

namespace platform::ui {

Rect SceneWriter::underSafeArea(const Rect& rect) const {
    const double left = rect.x <= 0 ? scene_.safeArea.leading : 0;
    const double top = rect.y <= 0 ? scene_.safeArea.top : 0;
    const double right = rect.maxX() >= scene_.size.width ? scene_.safeArea.trailing : 0;
    const double bottom = rect.maxY() >= scene_.size.height ? scene_.safeArea.bottom : 0;
    return {rect.x - left, rect.y - top, rect.width + left + right, rect.height + top + bottom};
}

} // namespace platform::ui
