#pragma once

#include "simulator/bus/Types.h"
#include "simulator/sysextd/CallGate.h"
#include "simulator/sysextd/Clients.h"
#include "simulator/sysextd/Service.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

namespace simulator {

/// The service as the bus sees it: every method of both interfaces under its own name, called by the generated
/// adaptors. Who calls is looked up for each call; a refusal becomes an error reply.
class BusObject : public QObject, protected QDBusContext {
    Q_OBJECT

public:
    /// owner: the user whose machine it is; others are refused. The service must outlive it.
    BusObject(const QDBusConnection& bus, Service& service, uid_t owner);

    // What applications ask.
    void Submit(const QString& token, const QString& kind, const QString& identifier);
    void AnswerReplacement(const QString& token, const QString& action);

    // What is there.
    QList<CopyEntry> ListCopies();
    QList<RequestEntry> ListRequests();
    QList<SwitchEntry> ListSwitches();
    QStringList ListIdentifiers();
    QStringList GetApplicationsFolders();
    bool GetDeveloperMode();
    QByteArray GetProfile();

    // The person and the machine.
    void Allow(const QString& identifier);
    void Deny(const QString& identifier);
    void Authorize(const QString& identifier);
    void Refuse(const QString& identifier);
    void Disable(const QString& identifier);
    void Enable(const QString& identifier);
    void Restart();
    void Reset();
    void Install(const QString& identifier, const QString& shortVersion, const QString& version,
                 const QString& condition);
    void Uninstall(const QString& team, const QString& identifier);
    void SetApplicationsFolders(const QStringList& folders);
    void SetDeveloperMode(bool on);
    void SetProfile(const QByteArray& profile);
    qlonglong Advance(qlonglong milliseconds);
    void SetSwitch(const QString& name, const QString& value);
    void OrderFault(const QString& kind, const QString& fault, const QString& domain, qlonglong code,
                    const QString& description, qlonglong milliseconds);

signals:
    void Restarting();
    void Changed();
    void Event(qlonglong time, const QString& identifier, const QString& text);

private:
    void send(const Answer& answer);
    void tell(const simulator::Event& event);
    void flush();
    void clientLeft(const QString& name);

    /// Whether the caller is the machine's owner and leaves time for others; another is refused.
    bool mayCall();
    /// Does something for the caller, or refuses it.
    void perform(const std::function<Verdict(Machine&)>& deed);
    /// The same for one extension.
    void perform(Verdict (Machine::*deed)(const std::string&), const QString& identifier);
    void refuse(const Refusal& refusal);

    QDBusConnection bus_;
    Service& service_;
    Clients clients_;
    CallGate gate_;
};

} // namespace simulator
