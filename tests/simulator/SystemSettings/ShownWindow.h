#pragma once

#include "simulator/SystemSettings/SettingsWindow.h"
#include "tests/simulator/support/TestApplication.h"

#include <QAccessible>
#include <QApplication>
#include <QStringList>
#include <QTemporaryDir>

#include <optional>

namespace simulator::tests {

/// An application that draws into memory, in the appearance of System Settings.
class OffscreenApplication {
public:
    OffscreenApplication();

private:
    QTemporaryDir runtime_;
    int argc_ = 1;
    char name_[6] = "tests";
    char* argv_[2] = {name_, nullptr};
    std::optional<QApplication> application_;
};

/// The window of System Settings as assistive technology finds it.
class ShownWindow {
public:
    /// Shows it and gives it the keyboard.
    explicit ShownWindow(const QDBusConnection& bus);

    /// The window itself, for what a person does with the pointer and the keys.
    settings::SettingsWindow& window() { return window_; }

    /// The visible control whose accessible name it is; null if there is none.
    QWidget* named(const QString& name);
    bool shows(const QString& name) { return named(name) != nullptr; }
    /// Every visible text, in the order of the window.
    QStringList texts();
    bool says(const QString& text) { return texts().contains(text); }
    /// The accessible name of what has keyboard focus.
    QString focused();

    /// Presses the control as assistive technology does. It must be there.
    void press(const QString& name, const QString& action = QAccessibleActionInterface::pressAction());

    /// Whether it comes about while events are handled; false after as long as a test is willing to wait.
    [[nodiscard]] bool untilShown(const QString& name) {
        return until([&] { return shows(name); });
    }
    [[nodiscard]] bool untilSaid(const QString& text) {
        return until([&] { return says(text); });
    }

private:
    settings::SettingsWindow window_;
};

} // namespace simulator::tests
