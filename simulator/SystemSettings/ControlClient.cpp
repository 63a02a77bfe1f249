#include "simulator/SystemSettings/ControlClient.h"

#include <algorithm>
#include <array>
#include <utility>

namespace simulator::settings {

namespace {

/// Says whether it means that the service is not there, and does not come when it is called.
bool isAbsence(const QDBusError& error) {
    constexpr std::array absences{QDBusError::ServiceUnknown, QDBusError::NoReply, QDBusError::Disconnected,
                                  QDBusError::NoServer};
    return std::count(absences.begin(), absences.end(), error.type()) > 0 || cannotBeStarted(error);
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
    connect(&presence_, &ServicePresence::busLost, this, [this] { lose(noBus); });
}

void ControlClient::refresh() {
    changedMeanwhile_ = refreshing_;
    if (refreshing_) return;
    if (!bus_.isConnected()) return lose(noBus);
    refreshing_ = true;
    whenAnswered(control_.ListCopies(), *this, [this](const QDBusPendingReply<QList<CopyEntry>>& answer) {
        if (answer.isError()) return refreshFailed(answer.error());
        listRequests(answer.value());
    });
}

void ControlClient::act(const QStringList& words) {
    whenAnswered(control_.Do(words, {}), *this, [this, words](const QDBusPendingReply<QByteArray>& answer) {
        if (!answer.isError()) return;
        // Someone else was quicker: the lists will say so.
        if (answer.error().name() == QString{errorPrefix} + "NothingWaiting") return refresh();
        if (answer.error().name() == QString{errorPrefix} + "ForbiddenByProfile")
            return emit refused(QStringLiteral("A management profile forbids %1.").arg(words.last()));
        emit refused(reasonOf(answer.error()));
    });
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
    emit absent(reason, bus_.isConnected());
}

} // namespace simulator::settings
