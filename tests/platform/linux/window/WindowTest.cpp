#include "tests/platform/linux/window/WindowTest.h"

#include "platform/linux/Appearance.h"

#include <QTest>
#include <QWindow>

namespace platform {

TestApplication::Style::Style() {
    chooseStyle();
}

TestApplication::TestApplication() : application_{argc_, argv_.data()} {
    QApplication::setQuitOnLastWindowClosed(false);
}

WindowTest::WindowTest() {
    show({});
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
}

void WindowTest::show(std::vector<ui::SceneNode> nodes) {
    window_.present(scene(std::move(nodes)));
    QCoreApplication::processEvents();
}

void WindowTest::pressMouse(const QPoint at, const Qt::MouseButton button) {
    QTest::mousePress(window_.windowHandle(), button, {}, at);
}

void WindowTest::moveMouse(const QPoint to) {
    QTest::mouseMove(window_.windowHandle(), to);
}

void WindowTest::releaseMouse(const QPoint at, const Qt::MouseButton button) {
    QTest::mouseRelease(window_.windowHandle(), button, {}, at);
}

void WindowTest::click(const QPoint at, const Qt::MouseButton button) {
    pressMouse(at, button);
    releaseMouse(at, button);
}

void WindowTest::pressKey(const Qt::Key key, const Qt::KeyboardModifiers modifiers) {
    QTest::keyPress(window_.windowHandle(), key, modifiers);
}

void WindowTest::releaseKey(const Qt::Key key) {
    QTest::keyRelease(window_.windowHandle(), key);
}

void WindowTest::key(const Qt::Key key, const Qt::KeyboardModifiers modifiers) {
    pressKey(key, modifiers);
    releaseKey(key);
}

QImage WindowTest::picture() {
    return window_.grab().toImage();
}

std::string WindowTest::focused() const {
    const auto* control = dynamic_cast<const SceneControl*>(window_.focusWidget());
    return control ? control->control().accessibleName : std::string{};
}

SceneControl* WindowTest::control(const std::string& accessibleName) const {
    for (QAbstractButton* candidate : window_.findChildren<QAbstractButton*>()) {
        auto* found = dynamic_cast<SceneControl*>(candidate);
        if (found && found->isVisible() && found->control().accessibleName == accessibleName) return found;
    }
    return nullptr;
}

QMenu* WindowTest::openMenu() {
    return qobject_cast<QMenu*>(QApplication::activePopupWidget());
}

bool WindowTest::differs(const QImage& before, const QRect area) {
    return picture().copy(area) != before.copy(area);
}

} // namespace platform
