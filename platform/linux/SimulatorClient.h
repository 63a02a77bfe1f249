#pragma once

#include "platform/SystemExtensions.h"
#include "platform/linux/SimulatorAnswer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace platform {

/// One connection to a message bus, and the requests that went to the extension service through it.
///
/// Each submitted token ends with exactly one last answer, unless the service leaves it open: what goes wrong on the
/// way is an Error. Answers for a token that ended, or that is not ours, are dropped, and so is all that comes from
/// anyone but the owner of the service's name. Calls never wait for the bus daemon or the service; making a client
/// waits for the daemon's greeting, as every program on a bus does. Nothing is sent twice.
class SimulatorClient final : public QObject {
    Q_OBJECT

public:
    /// What a client tells its owner, from the main loop or from inside submit.
    struct Listener {
        std::function<void(const QString& token, SimulatorAnswer answer)> answered;
        /// The simulated machine goes down.
        std::function<void()> restarting;
    };

    /// Connects to the bus at `address`.
    SimulatorClient(const QString& address, Listener listener);
    SimulatorClient(const SimulatorClient&) = delete;
    SimulatorClient& operator=(const SimulatorClient&) = delete;
    ~SimulatorClient() override;

    /// False where there was no bus, and once it has gone. It stays false.
    bool isConnected() const { return connected_; }

    /// The token is new to this client.
    void submit(const QString& token, OSSystemExtensionRequest::Kind kind, const QString& identifier);
    /// Dropped if the request ended meanwhile.
    void answerReplacement(const QString& token, OSSystemExtensionReplacementAction action);

private slots:
    void nameOwnerChanged(const QDBusMessage& signal);
    void busDisconnected();
    void serviceSignalled(const QDBusMessage& signal);

private:
    /// Ends a call's watch, also from inside its own notification.
    struct DeleteLater {
        void operator()(QObject* const object) const {
            object->disconnect();
            object->deleteLater();
        }
    };
    using PendingCall = std::unique_ptr<QDBusPendingCallWatcher, DeleteLater>;

    struct Pending {
        PendingCall submission;
        PendingCall replacement;
        /// Who took the request; empty as long as nobody has.
        QString acceptedBy;
    };

    void listen();
    void findOwner();
    void foundOwner(const QString& owner);
    PendingCall call(const QDBusMessage& message, std::function<void(const QDBusMessage& reply)> replied);
    void submissionReplied(const QString& token, const QDBusMessage& reply);
    void replacementReplied(const QString& token, const QDBusMessage& reply);
    void answer(const QString& token, SimulatorAnswer answer);
    void fail(const QString& token, const QString& description);
    template <typename Which>
    void failWhere(Which which, const QString& description);

    Listener listener_;
    QString connectionName_;
    QDBusConnection connection_;
    bool connected_;
    QString owner_;
    PendingCall findingOwner_;
    /// What came while the owner was being found.
    std::vector<QDBusMessage> earlySignals_;
    std::map<QString, Pending> pending_;
};

} // namespace platform
