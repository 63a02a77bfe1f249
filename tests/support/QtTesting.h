#pragma once

#include <QString>

#include <functional>
#include <ostream>

// What tests of Qt programs share.

/// How GoogleTest shows a text of Qt.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace tests {

/// From here on every warning that Qt prints fails the test that is running, but for those that are usual.
void failOnQtWarnings(bool (*isUsual)(const QString& message) = [](const QString&) { return false; });

/// Handles events, sleeping in between, until the condition holds; looks at it after each. False if it does not within
/// half a minute: a bound for a test that fails, not a time to wait.
[[nodiscard]] bool until(const std::function<bool()>& condition);

/// Handles every event that is there already, the deferred deletions too.
void handleEvents();

} // namespace tests
