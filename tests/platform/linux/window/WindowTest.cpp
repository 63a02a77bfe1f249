#include "tests/platform/linux/window/WindowTest.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/SceneAccessibility.h"
#include "tests/support/QtTesting.h"

#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <gmock/gmock.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include <private/qguiapplication_p.h>

namespace platform {

using namespace ui;

namespace {

void setAccessibilityActive(const bool active) {
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
}

} // namespace

TestApplication::Style::Style() {
    chooseStyle();
}

TestApplication::TestApplication() : application_{argc_, argv_.data()} {
    QApplication::setQuitOnLastWindowClosed(false);
    makeScenesAccessible();
}

ActiveAccessibility::ActiveAccessibility() {
    setAccessibilityActive(true);
}

ActiveAccessibility::~ActiveAccessibility() {
    setAccessibilityActive(false);
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

SceneNode button(Place place, const Rect rect, std::string name, std::function<void()> run) {
    Control control{rect, std::move(place), std::move(name), PushButton{{std::move(run)}}, {}};
    control.content = {{Clip{rect, ShapeKind::capsule, {{Fill{rect, ShapeKind::rectangle, Color::black}}}}}};
    return {std::move(control)};
}

SceneNode menu(Place place, const Point origin, std::string name, std::vector<MenuItem> items) {
    const Rect rect{origin.x, origin.y, 10, 16};
    return {Control{rect,
                    std::move(place),
                    std::move(name),
                    PullDownMenu{std::move(items)},
                    {{MenuIndicator{rect, Color::black}}}}};
}

SceneNode text(const Point origin, std::string text) {
    TextRun run;
    run.rect = {origin.x, origin.y, 200, 16};
    run.text = std::move(text);
    return {std::move(run)};
}

SceneNode announcedText(const Point origin, std::string sentence) {
    SceneNode node = text(origin, std::move(sentence));
    std::get<TextRun>(node.value).announced = true;
    return node;
}

SceneNode namedImage(const Rect rect, std::string image, std::string name) {
    ImageRun run;
    run.rect = rect;
    run.image = {std::move(image)};
    run.accessibleName = std::move(name);
    return {std::move(run)};
}

MenuItem item(std::string title, std::function<void()> run) {
    return {std::move(title), {"trash", ImageReference::Source::system}, {std::move(run)}};
}

Scene scene(std::vector<SceneNode> nodes) {
    Scene result;
    result.size = {450, 230};
    result.nodes = std::move(nodes);
    result.preferredColorScheme = ColorScheme::light;
    return result;
}

Place inCard(const std::uint32_t row, const std::uint32_t index) {
    return {{row, index}, 1};
}

} // namespace platform

int main(int argc, char** argv) {
    // The offscreen platform itself prints what it lacks.
    tests::failOnQtWarnings([](const QString& message) { return message.startsWith("This plugin does not support "); });
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir runtime;
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) qputenv("XDG_RUNTIME_DIR", runtime.path().toUtf8());
    testing::InitGoogleMock(&argc, argv);
    return RUN_ALL_TESTS();
}
