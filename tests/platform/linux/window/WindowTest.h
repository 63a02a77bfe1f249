#pragma once

#include "platform/linux/ImageStore.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/SceneControl.h"
#include "platform/ui/Scene.h"
#include "tests/support/FakeServices.h"

#include <QApplication>
#include <QImage>
#include <QMenu>

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace platform {

/// An application like the running one. A process can have several, one after another.
class TestApplication {
public:
    TestApplication();

private:
    struct Style {
        Style();
    };
    Style style_;
    int argc_ = 1;
    std::array<char, 5> name_{"test"};
    std::array<char*, 2> argv_{name_.data(), nullptr};
    QApplication application_;
};

/// While one exists, the application sends accessibility events, as it does when assistive technology runs. Needs the
/// application.
class ActiveAccessibility {
public:
    ActiveAccessibility();
    ~ActiveAccessibility();
};

/// A shown and active window, with mouse and keyboard.
class WindowTest : public testing::Test {
protected:
    WindowTest();

    /// Presents the nodes in a scene of 450 by 230 and handles the resulting events.
    void show(std::vector<ui::SceneNode> nodes);

    /// Positions are relative to the window. Each function handles the resulting events before it returns.
    void pressMouse(QPoint at, Qt::MouseButton button = Qt::LeftButton);
    void moveMouse(QPoint to);
    void releaseMouse(QPoint at, Qt::MouseButton button = Qt::LeftButton);
    void click(QPoint at, Qt::MouseButton button = Qt::LeftButton);
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void releaseKey(Qt::Key key);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});

    /// A picture of the window.
    QImage picture();
    /// The accessible name of the control with keyboard focus; empty if there is none.
    std::string focused() const;
    /// The native control with this accessible name; null if there is none.
    SceneControl* control(const std::string& accessibleName) const;
    /// The open menu; null if there is none.
    static QMenu* openMenu();
    /// Whether anything in this area has changed since `before`.
    bool differs(const QImage& before, QRect area);

    fake::FreshServices services_;
    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
    MainWindow window_{QStringLiteral("Window"), images_};
};

// Scenes made by hand, as a layout would return them.

/// A black capsule at `rect` that runs `run`.
ui::SceneNode button(ui::Place place, ui::Rect rect, std::string name, std::function<void()> run);
/// A menu whose indicator is 10 by 16 and has its top left corner at `origin`.
ui::SceneNode menu(ui::Place place, ui::Point origin, std::string name, std::vector<ui::MenuItem> items);
ui::SceneNode text(ui::Point origin, std::string text);
ui::SceneNode announcedText(ui::Point origin, std::string text);
ui::SceneNode namedImage(ui::Rect rect, std::string image, std::string name);
ui::MenuItem item(std::string title, std::function<void()> run);

/// 450 by 230.
ui::Scene scene(std::vector<ui::SceneNode> nodes);

/// The place of the `index`th control of the `row`th card.
ui::Place inCard(std::uint32_t row, std::uint32_t index);

} // namespace platform
