#pragma once

#include "platform/SystemExtensions.h"
#include "platform/linux/SimulatorAnswer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>

namespace platform {

/// The exit status of an application that the simulated machine ended because it restarts: whoever started it is to
/// start it again. A closed window ends with 0.
inline constexpr int exitStatusOfRestart = 75;

/// The manager of a system without an extension service: it asks the simulator, over a message bus.
///
/// Each request ends with one last answer, unless the service leaves it open: no time limit ends it, and nothing is
/// sent twice. Whatever goes wrong between here and the service, the service's or the bus's end included, is an answer,
/// an error with the code "unknown". What anyone but the owner of the service's name says is dropped. When the
/// simulated machine restarts, the application ends with exitStatusOfRestart.
///
/// It connects at a submission, and connects anew at the next once the bus has gone. Connecting waits for the bus;
/// nothing else waits for anyone.
class SimulatorManager final : public QObject, public OSSystemExtensionManager {
    Q_OBJECT

public:
    /// A manager on the bus at `busAddress`. It goes before the QCoreApplication does, or calls close().
    explicit SimulatorManager(QString busAddress);
    ~SimulatorManager() override;

    void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) override;

    /// Leaves the bus and forgets every request, unanswered.
    void close();

private slots:
    void nameOwnerChanged(const QDBusMessage& signal);
    void busDisconnected();
    void serviceSignalled(const QDBusMessage& signal);

private:
    struct Pending {
        std::shared_ptr<OSSystemExtensionRequest> request;
        /// The unique name of the service that took the request; empty as long as none has.
        QString acceptedBy;
    };

    void connectToBus();
    void listen();
    void call(const QString& method, const QVariantList& arguments, std::function<void(const QDBusMessage&)> replied);
    void submissionReplied(const QString& token, const QDBusMessage& reply);
    void answerReplacement(const QString& token, OSSystemExtensionReplacementAction action);
    /// The request with this token is answered; dropped if it has ended.
    void answer(const QString& token, SimulatorAnswer answer);
    void fail(const QString& token, const QString& description);
    void failWhere(const std::function<bool(const Pending&)>& which, const QString& description);

    const QString busAddress_;
    const QString connectionName_;
    QDBusConnection connection_{QString{}};
    bool connected_ = false;
    /// The unique name of the running service; empty if there is none.
    QString owner_;
    quint64 lastToken_ = 0;
    std::map<QString, Pending> pending_;
};

} // namespace platform
