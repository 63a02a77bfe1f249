#pragma once

#include "simulator/bus/Types.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace simulator::tests {

/// A service that answers what the test says, and remembers what it was asked to do. What it refuses or leaves
/// unanswered is named by the method's name, or by the verb that is to be done.
class ScriptedControl : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.kelvra.Simulator1.Control")

public:
    /// Takes the service's name on the bus.
    explicit ScriptedControl(QDBusConnection bus);
    ~ScriptedControl() override;

    /// Replaces the copies and tells it.
    void show(QList<CopyEntry> copies);
    /// The same for the requests.
    void showRequests(QList<RequestEntry> requests);

    /// Answers with an error from now on; its name without the common prefix.
    void refuse(const QString& what, const QString& error, const QString& message);
    /// Leaves it unanswered from now on.
    void ignore(const QString& what);

    /// Leaves the bus's name, as if it had died; and takes it again.
    void leave();
    void comeBack();

    /// The words of each thing that was to be done, with one blank between them.
    const QStringList& deeds() const { return deeds_; }
    /// How often a method was called, or a verb said.
    int timesAsked(const QString& what) const { return asked_.value(what); }

    /// What ListIdentifiers answers.
    QStringList identifiers;

    // What the bus calls.

public slots:
    QList<simulator::CopyEntry> ListCopies();
    QList<simulator::RequestEntry> ListRequests();
    QStringList ListIdentifiers();
    /// Answers with the contents.
    QByteArray Do(const QStringList& words, const QByteArray& contents);

    // What listeners on the bus hear.

signals:
    void Changed();
    void Event(qlonglong time, const QString& identifier, const QString& text, const QString& application);

private:
    struct Refusal {
        QString error;
        QString message;
    };

    void ask(const QString& what);

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
