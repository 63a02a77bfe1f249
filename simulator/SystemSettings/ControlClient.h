#pragma once

#include "simulator/client/Client.h"

#include <QDBusConnection>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

namespace simulator::settings {

/// The service as the window knows it. Nothing here waits: each answer and each change comes as a signal.
class ControlClient : public QObject {
    Q_OBJECT

public:
    explicit ControlClient(QDBusConnection bus);

    /// Asks for the lists; the bus starts the service if it is not running and can be started.
    void refresh();

    /// Has the service do what the words say: a verb of the command line, and what follows it.
    void act(const QStringList& words);

signals:
    /// All that is there now: after refresh(), and after every change.
    void listed(const QList<simulator::CopyEntry>& copies, const QList<simulator::RequestEntry>& requests);
    /// The service is not there, for that reason. What was listed is no longer so. Without its bus it cannot be started
    /// again.
    void absent(const QString& reason, bool canBeStarted);
    /// What was asked for was not done, for that reason.
    void refused(const QString& reason);

private:
    void listRequests(const QList<CopyEntry>& copies);
    void refreshFailed(const QDBusError& error);
    void lose(const QString& reason);

    QDBusConnection bus_;
    ComKelvraSimulator1ControlInterface control_;
    ServicePresence presence_;
    bool refreshing_ = false;
    bool changedMeanwhile_ = false;
};

} // namespace simulator::settings
