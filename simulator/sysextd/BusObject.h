#pragma once

#include "simulator/bus/Types.h"
#include "simulator/sysextd/Service.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QObject>

namespace simulator {

/// In the order of the printed list.
QList<CopyEntry> copyEntries(const State& state);
/// The signal that carries an answer to its client.
QDBusMessage messageOf(const Answer& answer);

/// The service on the bus: the methods of both interfaces, called by the generated adaptors. It looks the caller up for
/// each call, and turns a refusal into an error reply.
class BusObject : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    /// The service must outlive it.
    BusObject(QDBusConnection bus, Service& service);

    // What applications ask.
    void Submit(const QString& token, const QString& kind, const QString& identifier);
    void AnswerReplacement(const QString& token, const QString& action);

    // What is there.
    QList<CopyEntry> ListCopies();
    QList<RequestEntry> ListRequests();
    QStringList ListIdentifiers();

    // The person and the machine.
    QByteArray Do(const QStringList& words, const QByteArray& contents);

signals:
    void Restarting();
    void Changed();
    void Event(qlonglong time, const QString& identifier, const QString& text, const QString& application);

private slots:
    /// Of any client of the bus.
    void clientLeft(const QString& name);

private:
    /// The application bundle that its program is in now, as it may be moved while it runs; empty if it is in none.
    std::string bundleOf(const QString& client) const;

    /// Answers the call, once what it did is in the store; a refusal becomes an error reply.
    void answer(const Verdict& verdict, const QVariantList& values = {});

    QDBusConnection bus_;
    Service& service_;
    QList<QDBusMessage> replies_;
};

} // namespace simulator
