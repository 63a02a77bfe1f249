#pragma once

#include "tests/simulator/SystemSettings/ShownWindow.h"
#include "tests/simulator/support/QtMessages.h"
#include "tests/simulator/support/ScriptedControl.h"
#include "tests/simulator/support/Until.h"
#include "tests/support/PrivateBus.h"

#include <gtest/gtest.h>

#include <optional>

namespace simulator::tests {

inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto network = "com.kelvra.driverkit.usb-to-poe";

inline CopyEntry numbered(qlonglong number, CopyEntry copy) {
    copy.number = number;
    return copy;
}

inline const auto waitingCamera = [] { return numbered(1, copyIn("waiting")); };
inline const auto enabledCamera = [] { return numbered(1, copyIn("enabled")); };
inline const auto enabledNetwork = [] { return numbered(2, copyIn("enabled", network)); };

inline RequestEntry question(const QString& identifier) {
    RequestEntry request;
    request.identifier = identifier;
    request.stage = "authorization";
    request.application = "/Applications/Driver Manager.app";
    return request;
}

/// The window in front of a service that answers what the test says, on a bus of their own.
class SystemSettings : public testing::Test {
protected:
    SystemSettings() { control_.emplace(bus_.connect()); }

    ScriptedControl& control() { return *control_; }
    ::tests::PrivateBus& bus() { return bus_; }
    settings::SettingsWindow& window() { return shown_->window(); }

    /// Shows the window, and waits until it shows what the service listed.
    void open() {
        shown_.emplace(bus_.connect());
        ASSERT_TRUE(untilSaid("Camera Extensions"));
    }

    /// The same in front of a service that is not there.
    void openWithoutService() {
        control_->leave();
        shown_.emplace(bus_.connect());
        ASSERT_TRUE(untilSaid("The simulated Mac is not running."));
    }

    void close() { shown_.reset(); }

    QWidget* named(const QString& name) { return shown_->named(name); }
    bool shows(const QString& name) { return shown_->shows(name); }
    QStringList texts() { return shown_->texts(); }
    bool says(const QString& text) { return shown_->says(text); }
    QString focused() { return shown_->focused(); }
    void press(const QString& name) { shown_->press(name); }

    [[nodiscard]] bool untilShown(const QString& name) { return shown_->untilShown(name); }
    [[nodiscard]] bool untilSaid(const QString& text) { return shown_->untilSaid(text); }
    /// Whether the control is cut off at the window's right or lower edge.
    bool reachesBeyond(const QString& name) {
        const auto* control = named(name);
        const auto corner = control->mapTo(&window(), control->rect().bottomRight());
        return corner.x() > window().width() - 24 || corner.y() >= window().height();
    }
    [[nodiscard]] bool untilDone(const QString& deed) {
        return until([this, &deed] { return control().deeds().contains(deed); });
    }

private:
    OffscreenApplication application_;
    QtMessages messages_;
    ::tests::PrivateBus bus_;
    std::optional<ScriptedControl> control_;
    std::optional<ShownWindow> shown_;
};

} // namespace simulator::tests
