#pragma once

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"

#include <QAbstractButton>
#include <QLabel>
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

/// The window in front of a service that answers what the test says, on a bus of their own.
class SystemSettings : public testing::Test {
protected:
    ScriptedControl& control() { return control_; }
    ::tests::PrivateBus& bus() { return bus_; }
    ShownWindow& shown() { return *shown_; }
    settings::SettingsWindow& window() { return shown_->window(); }

    /// Shows the window, and waits until it shows what the service listed.
    void open(const QList<CopyEntry>& all = {}) {
        control().show(all);
        shown_.emplace(bus_.connect());
        ASSERT_TRUE(untilSaid("Camera Extensions"));
    }

    /// The same, and waits until an administrator is asked about the network driver.
    void openWithQuestion() {
        control().showRequests({question(network)});
        open(copies("enabled", "enabled"));
        ASSERT_TRUE(untilShown("Authorize Network"));
    }

    void close() { shown_.reset(); }

    QWidget* named(const QString& name) { return shown_->named(name); }
    bool shows(const QString& name) { return shown_->shows(name); }
    QStringList texts() { return shown_->texts(); }
    bool says(const QString& text) { return shown_->says(text); }
    QString focused() { return shown_->focused(); }
    void press(const QString& name) { shown_->press(name); }
    void click(const QString& name) { QTest::mouseClick(named(name), Qt::LeftButton); }
    static void key(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    [[nodiscard]] bool untilShown(const QString& name) { return shown_->untilShown(name); }
    [[nodiscard]] bool untilSaid(const QString& text) { return shown_->untilSaid(text); }
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
    OffscreenApplication application_;
    ::tests::PrivateBus bus_;
    ScriptedControl control_{bus_.connect()};
    std::optional<ShownWindow> shown_;
};

} // namespace simulator::tests
