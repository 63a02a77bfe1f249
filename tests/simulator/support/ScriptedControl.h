#pragma once

#include "simulator/bus/Types.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace simulator::tests {

/// A service that answers what the test says, and remembers what it was asked to do.
class ScriptedControl : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.kelvra.Simulator1.Control")

public:
    /// Takes the service's name on the bus.
    explicit ScriptedControl(const QDBusConnection& bus);
    ~ScriptedControl() override;

    /// Replaces the copies and tells it.
    void show(QList<CopyEntry> copies);
    /// The same for the requests.
    void showRequests(QList<RequestEntry> requests);

    /// Answers a method with an error from now on; the name without the common prefix.
    void refuse(const QString& method, const QString& error, const QString& message);
    /// Leaves a method unanswered from now on.
    void ignore(const QString& method);

    /// Leaves the bus's name, as if it had died; and takes it again.
    void leave();
    void comeBack();

    const QStringList& deeds() const { return deeds_; }
    int timesAsked(const QString& method) const { return asked_.value(method); }

    QStringList identifiers;
    QStringList applicationsFolders;
    QList<SwitchEntry> switches;
    QByteArray profile;

public slots:
    QList<simulator::CopyEntry> ListCopies();
    QList<simulator::RequestEntry> ListRequests();
    QStringList ListIdentifiers();
    QList<simulator::SwitchEntry> ListSwitches();
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
    QStringList GetApplicationsFolders();
    void SetDeveloperMode(bool on);
    bool GetDeveloperMode();
    void SetProfile(const QByteArray& contents);
    QByteArray GetProfile();
    qlonglong Advance(qlonglong milliseconds);
    void SetSwitch(const QString& name, const QString& value);
    void OrderFault(const QString& kind, const QString& fault, const QString& domain, qlonglong code,
                    const QString& description, qlonglong milliseconds);

signals:
    void Changed();
    void Event(qlonglong time, const QString& identifier, const QString& text);

private:
    struct Refusal {
        QString error;
        QString message;
    };

    void ask(const QString& method);
    void deed(const QStringList& words);

    QDBusConnection bus_;
    QList<CopyEntry> copies_;
    QList<RequestEntry> requests_;
    QHash<QString, Refusal> refusals_;
    QStringList ignored_;
    QStringList deeds_;
    QHash<QString, int> asked_;
};

/// A copy in the condition, with the state and stars that belong to it.
CopyEntry copyIn(const QString& condition, const QString& identifier = "com.kelvra.ip-camera.cmio",
                 const QString& shortVersion = "2.1", const QString& version = "2105");

} // namespace simulator::tests
