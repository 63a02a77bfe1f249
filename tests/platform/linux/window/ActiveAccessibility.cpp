#include "tests/platform/linux/window/ActiveAccessibility.h"

#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

namespace platform {

namespace {

void setActive(const bool active) {
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
}

} // namespace

ActiveAccessibility::ActiveAccessibility() {
    setActive(true);
}

ActiveAccessibility::~ActiveAccessibility() {
    setActive(false);
}

} // namespace platform
