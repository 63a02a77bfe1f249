#pragma once

#include "simulator/SystemSettings/Appearance.h"
#include "simulator/SystemSettings/SettingsWindow.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/support/PrivateBus.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <optional>
#include <set>

namespace simulator::tests {

inline const QString camera{"com.kelvra.ip-camera.cmio"};
inline const QString network{"com.kelvra.driverkit.usb-to-poe"};

/// The camera and the network driver, each in a condition or, if that is empty, not there.
inline QList<CopyEntry> copies(const QString& ofCamera, const QString& ofNetwork = {}) {
    QList all{copyIn(ofCamera, camera), copyIn(ofNetwork, network)};
    all[0].number = 1;
    all[1].number = 2;
    all.removeIf([](const CopyEntry& copy) { return copy.condition.isEmpty(); });
    return all;
}

/// An older network driver, with which nothing can be done.
inline CopyEntry removedNetwork() {
    auto copy = copyIn("uninstalling", network, "2.0", "2004");
    copy.number = 3;
    return copy;
}

inline RequestEntry question(const QString& identifier, const QString& application = "Driver Manager",
                             qlonglong number = 1) {
    return {number, {}, {}, "/Applications/" + application + ".app", "deactivation", identifier, "authorization", 0};
}

inline QColor colorAt(QWidget& widget, const QPoint& place) {
    return widget.grab().toImage().pixelColor(place);
}

/// An application that draws into memory, in the appearance of System Settings.
class OffscreenApplication {
public:
    OffscreenApplication() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8());
        application_.emplace(argc_, argv_);
        ::tests::failOnQtWarnings([](const QString& message) {
            return isNoteOfOwnerRace(message) || message == u"This plugin does not support raise()";
        });
        settings::useAppearance(*application_);
    }

private:
    QTemporaryDir runtime_;
    int argc_ = 1;
    char name_[6] = "tests";
    char* argv_[2] = {name_, nullptr};
    std::optional<QApplication> application_;
};

/// The window in front of a service that answers what the test says, on a bus of their own, as assistive technology
/// finds it.
class SystemSettings : public testing::Test {
protected:
    ScriptedControl& control() { return control_; }
    ::tests::PrivateBus& bus() { return bus_; }
    settings::SettingsWindow& window() { return *window_; }

    /// Shows the window, and waits until it shows what the service listed.
    void open(const QList<CopyEntry>& all = {}) {
        control().show(all);
        window_.emplace(bus_.connect());
        window_->show();
        window_->activateWindow();
        ASSERT_TRUE(untilSaid("Camera Extensions"));
    }

    /// The same, and waits until an administrator is asked about the network driver.
    void openWithQuestion() {
        control().showRequests({question(network)});
        open(copies("enabled", "enabled"));
        ASSERT_TRUE(untilShown("Authorize Network"));
    }

    void close() { window_.reset(); }

    /// The visible control whose accessible name it is; null if there is none.
    QWidget* named(const QString& name) {
        for (auto* button : window_->findChildren<QAbstractButton*>())
            if (button->isVisible() && accessibleName(*button) == name) return button;
        return nullptr;
    }
    bool shows(const QString& name) { return named(name) != nullptr; }
    /// Every visible text, in the order of the window.
    QStringList texts() {
        QStringList all;
        for (auto* label : window_->findChildren<QLabel*>())
            if (label->isVisible()) all += accessibleName(*label);
        return all;
    }
    bool says(const QString& text) { return texts().contains(text); }
    /// The accessible name of what has keyboard focus.
    static QString focused() {
        auto* const widget = QApplication::focusWidget();
        return widget == nullptr ? QString{} : accessibleName(*widget);
    }
    /// Presses the control as assistive technology does. It must be there.
    void press(const QString& name, const QString& action = QAccessibleActionInterface::pressAction()) {
        QAccessible::queryAccessibleInterface(named(name))->actionInterface()->doAction(action);
    }
    void click(const QString& name) { QTest::mouseClick(named(name), Qt::LeftButton); }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    [[nodiscard]] bool untilShown(const QString& name) {
        return until([&] { return shows(name); });
    }
    [[nodiscard]] bool untilSaid(const QString& text) {
        return until([&] { return says(text); });
    }
    [[nodiscard]] bool untilDone(const QString& deed) {
        return until([this, &deed] { return control().deeds().contains(deed); });
    }
    [[nodiscard]] bool untilAsked(const QString& list, int times) {
        return until([this, &list, times] { return control().timesAsked(list) == times; });
    }

    QLabel& labelWith(const QString& text) {
        const auto labels = window().findChildren<QLabel*>();
        return **std::find_if(labels.begin(), labels.end(),
                              [&text](const QLabel* label) { return label->text().contains(text); });
    }

    /// How far the right edge of what is seen of a widget is from that of the window.
    int roomBeside(const QWidget& widget, int margin = 0) {
        return window().width() - widget.mapTo(&window(), QPoint{widget.width(), 0}).x() + margin;
    }

    /// That of each card and notice that is shown, and of the button Restart.
    std::set<int> roomsBeside() {
        std::set<int> rooms{roomBeside(*named("Restart"), settings::ringMargin)};
        for (const auto* frame : window().findChildren<QFrame*>())
            if (frame->isVisible() && QStringList{"card", "notice"}.contains(frame->property("role")))
                rooms.insert(roomBeside(*frame));
        return rooms;
    }

    /// Whether the control is cut off at the window's right or lower edge.
    bool reachesBeyond(const QString& name) {
        const auto* control = named(name);
        const auto corner = control->mapTo(&window(), control->rect().bottomRight());
        return corner.x() > window().width() - 24 || corner.y() >= window().height();
    }

    /// The names that Tab gives keyboard focus, one after the other.
    QStringList walk(int steps) {
        QStringList names;
        for (; steps > 0; --steps) {
            key(Qt::Key_Tab);
            names += focused();
        }
        return names;
    }

private:
    static QString accessibleName(QWidget& widget) {
        return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
    }

    OffscreenApplication application_;
    ::tests::PrivateBus bus_;
    ScriptedControl control_{bus_.connect()};
    std::optional<settings::SettingsWindow> window_;
};

} // namespace simulator::tests
