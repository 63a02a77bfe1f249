#pragma once

#include "simulator/core/RequestKind.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QProcess>
#include <QString>

namespace simulator::play {

/// A running application: a process that asks the service what it is told to, and tells what it hears; see
/// submit/main.cpp for how one speaks with it. Whatever does not come about, such as an answer within a minute, is
/// thrown as scenario::NotDone.
class ClientProcess {
public:
    /// Starts it.
    explicit ClientProcess(const QString& program);
    ~ClientProcess();
    ClientProcess(const ClientProcess&) = delete;
    ClientProcess& operator=(const ClientProcess&) = delete;

    /// Its unique name on the bus.
    const QString& name() const { return name_; }

    void submit(const QString& token, RequestKind kind, const QString& identifier);
    void answer(const QString& token, bool replace);
    /// What it heard since it was last asked, in order, up to what the bus held for it now.
    QList<QJsonObject> hear();

    /// Has it quit.
    void quit();
    /// Waits until it has ended by itself.
    void awaitEnd();

private:
    void tell(const QJsonObject& order);
    /// Reads on until it says that.
    QJsonObject await(const QString& said);
    QJsonObject readLine();

    QProcess process_;
    QString name_;
    QList<QJsonObject> heard_;
};

} // namespace simulator::play
