#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

// What tests of Qt programs share.

namespace tests {

/// From here on every warning that Qt prints fails the test that is running. Called once, first in main.
void failOnQtWarnings();
/// The same, but for what the offscreen platform says of what it lacks itself.
void failOnQtWarningsOffscreen();

/// Handles events, sleeping in between, until `condition` holds. False if it does not within half a minute: a bound
/// for a test that fails, not a time to wait.
template <typename Condition>
bool processEventsUntil(const Condition condition) {
    bool late = false;
    QTimer bound;
    bound.setSingleShot(true);
    QObject::connect(&bound, &QTimer::timeout, &bound, [&late] { late = true; });
    bound.start(std::chrono::seconds{30});
    while (!condition() && !late)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

} // namespace tests
