#pragma once

#include <QString>

#include <functional>
#include <ostream>

// Shared by tests of Qt programs.

/// Prints a Qt string in GoogleTest's messages.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace tests {

/// From now on, a warning that Qt prints fails the current test, unless it is a usual one.
void failOnQtWarnings(bool (*isUsual)(const QString& message) = [](const QString&) { return false; });

/// Handles events until the condition, which it checks after each, is true. Returns false if it is not within half a
/// minute, which only ends a test that has failed.
[[nodiscard]] bool until(const std::function<bool()>& condition);

/// Handles every pending event, including deferred deletions.
void handleEvents();

} // namespace tests
