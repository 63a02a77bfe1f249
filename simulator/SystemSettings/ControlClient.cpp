#include "simulator/SystemSettings/ControlClient.h"

#include "simulator/bus/Names.h"
#include "simulator/client/WhenAnswered.h"

#include <utility>

namespace simulator::settings {

namespace {

bool isAbsence(const QDBusError& error) {
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
    case QDBusError::NoReply:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
        return true;
    default:
        return error.name().startsWith("org.freedesktop.DBus.Error.Spawn.");
    }
}

const auto notRunning = QStringLiteral("The simulated Mac is not running.");
const auto noBus = QStringLiteral("There is no session bus, so there is no simulated Mac.");

QString reasonOf(const QDBusError& error) {
    return isAbsence(error) ? notRunning : error.message();
}

} // namespace

ControlClient::ControlClient(QDBusConnection bus)
    : bus_{std::move(bus)}, control_{serviceName, objectPath, bus_}, presence_{bus_} {
    connect(&control_, &ComKelvraSimulator1ControlInterface::Changed, this, &ControlClient::refresh);
    connect(&presence_, &ServicePresence::came, this, &ControlClient::refresh);
    connect(&presence_, &ServicePresence::went, this, [this] { lose(notRunning); });
    connect(&presence_, &ServicePresence::busLost, this, &ControlClient::loseBus);
}

void ControlClient::refresh() {
    changedMeanwhile_ = refreshing_;
    if (refreshing_) return;
    if (!bus_.isConnected()) return loseBus();
    refreshing_ = true;
    lostMeanwhile_ = false;
    whenAnswered(control_.ListCopies(), *this, [this](const QDBusPendingReply<QList<CopyEntry>>& answer) {
        if (answer.isError()) return refreshFailed(answer.error());
        listRequests(answer.value());
    });
}

void ControlClient::allow(const QString& identifier) {
    send(control_.Allow(identifier));
}

void ControlClient::deny(const QString& identifier) {
    send(control_.Deny(identifier));
}

void ControlClient::enable(const QString& identifier) {
    send(control_.Enable(identifier));
}

void ControlClient::disable(const QString& identifier) {
    send(control_.Disable(identifier));
}

void ControlClient::authorize(const QString& identifier) {
    send(control_.Authorize(identifier));
}

void ControlClient::refuse(const QString& identifier) {
    send(control_.Refuse(identifier));
}

void ControlClient::restart() {
    send(control_.Restart());
}

void ControlClient::listRequests(const QList<CopyEntry>& copies) {
    whenAnswered(control_.ListRequests(), *this, [this, copies](const QDBusPendingReply<QList<RequestEntry>>& answer) {
        if (answer.isError()) return refreshFailed(answer.error());
        refreshing_ = false;
        emit listed(copies, answer.value());
        if (changedMeanwhile_) refresh();
    });
}

void ControlClient::refreshFailed(const QDBusError& error) {
    refreshing_ = false;
    // Word that the service came may overtake word that it was not there. Otherwise looking again would start it, and
    // that is for the person to decide.
    const auto isThereNow = error.type() == QDBusError::ServiceUnknown && changedMeanwhile_;
    if (isThereNow)
        refresh();
    else
        lose(reasonOf(error));
}

void ControlClient::lose(const QString& reason) {
    changedMeanwhile_ = false;
    lostMeanwhile_ = true;
    emit absent(reason, bus_.isConnected());
}

void ControlClient::loseBus() {
    lose(noBus);
}

void ControlClient::send(const QDBusPendingCall& call) {
    whenAnswered(call, *this, [this](const QDBusPendingReply<>& answer) {
        if (!answer.isError()) return;
        // Someone else was quicker: the lists will say so.
        if (answer.error().name() == QString{errorPrefix} + "NothingWaiting") return refresh();
        emit refused(reasonOf(answer.error()));
    });
}

} // namespace simulator::settings
