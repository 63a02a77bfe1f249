#pragma once

#include <QCoreApplication>
#include <QString>

#include <chrono>
#include <functional>
#include <ostream>

/// How GoogleTest shows a text of Qt.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}

namespace simulator::tests {

/// While it lives, every warning of Qt fails the test that is running.
class QtMessages {
public:
    QtMessages();
    ~QtMessages();
    QtMessages(const QtMessages&) = delete;
    QtMessages& operator=(const QtMessages&) = delete;

private:
    QtMessageHandler before_;
};

/// The application of a test that needs an event loop and no window. A warning of Qt fails the test.
/// There may be one at a time, before anything of Qt's that needs events.
class TestApplication {
private:
    int argc_ = 1;
    char name_[6] = "tests";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
    QtMessages messages_;
};

/// Handles events until the condition holds; looks at it after each. Yields false if it does not hold in time, which is
/// only to end a test that fails.
[[nodiscard]] bool until(const std::function<bool()>& condition,
                         std::chrono::milliseconds patience = std::chrono::seconds{20});

/// Handles every event that is there already, the deferred deletions too.
void handleEvents();

} // namespace simulator::tests
