#pragma once

#include "Simulator1Proxy.h"

#include "simulator/core/Verbs.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QObject>

#include <memory>
#include <utility>

// How one speaks with the service and listens to it.

namespace simulator {

/// Has the service do what someone says; the answer is what there is to say to that, a text in UTF-8.
QDBusPendingReply<QByteArray> callToDo(ComKelvraSimulator1ControlInterface& control, const Saying& saying);

/// Whether the bus tried to start the service and failed.
bool cannotBeStarted(const QDBusError& error);

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

/// Tells when the service appears on a bus and when it is gone. It asks nothing and starts nothing.
class ServicePresence : public QObject {
    Q_OBJECT

public:
    explicit ServicePresence(QDBusConnection bus);

signals:
    /// The name has a new owner: everything known of the service has to be asked anew.
    void came();
    void went();
    /// The bus itself is gone. Nothing follows.
    void busLost();

private:
    QDBusConnection bus_;
    QDBusServiceWatcher watcher_;
};

/// Says whether Qt notes no more than that the service came or went while its owner was asked for. It has the right
/// owner by then, and nobody who reads the note could do anything about it.
bool isNoteOfOwnerRace(const QString& message);

/// From here on such notes are not printed; whatever else Qt says is. Called once, first in main.
void keepOwnerRacesQuiet();

} // namespace simulator
