#pragma once

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QObject>

#include <memory>
#include <utility>

namespace simulator {

/// Hands the answer of a call to handle, later, on the context's thread; never, if the context is gone by then.
template <typename Handle>
void whenAnswered(const QDBusPendingCall& call, QObject& context, Handle handle) {
    // The context owns the watcher from here on.
    const auto* const watcher = std::make_unique<QDBusPendingCallWatcher>(call, &context).release();
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context,
                     [answer = std::move(handle)](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         answer(*finished);
                     });
}

} // namespace simulator
