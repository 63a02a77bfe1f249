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

/// The exit status when the simulated machine restarts and the application is to be started again.
inline constexpr int exitStatusOfRestart = 75;

/// Submits requests to the simulator, over D-Bus.
/// Each request gets one last answer; there is no time limit and no retry. If the service or the bus goes away or
/// refuses, the request fails with the code "unknown". Messages from anyone but the owner of the service's name are
/// ignored. When the simulated machine restarts, the application exits with exitStatusOfRestart.
/// It connects at the first submission and, after the bus has gone, at the next. Only connecting blocks.
class SimulatorManager final : public QObject, public OSSystemExtensionManager {
    Q_OBJECT

public:
    /// Destroy it, or call close(), before the QCoreApplication is destroyed.
    explicit SimulatorManager(QString busAddress);
    ~SimulatorManager() override;

    void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) override;

    /// Disconnects and drops all requests without an answer.
    void close();

private slots:
    void nameOwnerChanged(const QDBusMessage& signal);
    void busDisconnected();
    void serviceSignalled(const QDBusMessage& signal);

private:
    struct Pending {
        std::shared_ptr<OSSystemExtensionRequest> request;
        /// The unique name of the service that accepted the request; empty until then.
        QString acceptedBy;
    };

    void connectToBus();
    void listen();
    void call(const QString& method, const QVariantList& arguments, std::function<void(const QDBusMessage&)> replied);
    void submissionReplied(const QString& token, const QDBusMessage& reply);
    void answerReplacement(const QString& token, OSSystemExtensionReplacementAction action);
    /// Delivers the answer; ignored if the request has ended.
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
