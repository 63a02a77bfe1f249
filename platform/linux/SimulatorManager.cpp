#include "platform/linux/SimulatorManager.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QPointer>
#include <QVariantList>

#include <limits>
#include <mutex>
#include <unistd.h>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr QLatin1String service{"com.kelvra.Simulator1"};
constexpr QLatin1String servicePath{"/com/kelvra/Simulator1"};

constexpr QLatin1String daemon{"org.freedesktop.DBus"};
constexpr QLatin1String daemonPath{"/org/freedesktop/DBus"};
constexpr QLatin1String localInterface{"org.freedesktop.DBus.Local"};

/// By default, a call fails after 25 s, and a later reply is dropped.
constexpr int noTimeLimit = std::numeric_limits<int>::max();

QString nameOf(const OSSystemExtensionRequest::Kind kind) {
    using Kind = OSSystemExtensionRequest::Kind;
    if (kind == Kind::properties) return QStringLiteral("properties");
    return kind == Kind::activation ? QStringLiteral("activation") : QStringLiteral("deactivation");
}

QString nameOf(const OSSystemExtensionReplacementAction action) {
    return action == OSSystemExtensionReplacementAction::replace ? QStringLiteral("replace") : QStringLiteral("cancel");
}

QString serviceWentAway() {
    return QStringLiteral("The extension service went away before it answered.");
}

bool isError(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ErrorMessage;
}

/// The unique name that owns the service's name on a bus; empty if there is none.
QString ownerOn(const QDBusConnection& connection) {
    auto question = QDBusMessage::createMethodCall(daemon, daemonPath, daemon, QStringLiteral("GetNameOwner"));
    question << QString{service};
    const auto reply = connection.call(question, QDBus::Block, noTimeLimit);
    return isError(reply) ? QString{} : reply.arguments().value(0).toString();
}

QString sessionBusAddress() {
    auto address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) return address;
    const auto runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR", QStringLiteral("/run/user/%1").arg(getuid()));
    return QStringLiteral("unix:path=%1/bus").arg(runtimeFolder);
}

} // namespace

OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    static SimulatorManager manager{sessionBusAddress()};
    static std::once_flag announced;
    std::call_once(announced, [] { qAddPostRoutine([] { manager.close(); }); });
    return manager;
}

SimulatorManager::SimulatorManager(QString busAddress)
    : busAddress_{std::move(busAddress)},
      connectionName_{QStringLiteral("simulator manager %1").arg(reinterpret_cast<quintptr>(this))} {
}

SimulatorManager::~SimulatorManager() {
    close();
}

void SimulatorManager::close() {
    connected_ = false;
    owner_.clear();
    pending_.clear();
    connection_ = QDBusConnection{QString{}};
    QDBusConnection::disconnectFromBus(connectionName_);
}

void SimulatorManager::submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) {
    if (!connected_) connectToBus();
    const auto token = QString::number(++lastToken_);
    const QVariantList arguments{token, nameOf(request->kind()), QString::fromStdString(request->identifier())};
    pending_.emplace(token, Pending{std::move(request), {}});
    if (!connected_) {
        return fail(token, QStringLiteral("There is no session bus: %1").arg(connection_.lastError().message()));
    }
    call(QStringLiteral("Submit"), arguments,
         [this, token](const QDBusMessage& reply) { submissionReplied(token, reply); });
}

void SimulatorManager::connectToBus() {
    close();
    connection_ = QDBusConnection::connectToBus(busAddress_, connectionName_);
    connected_ = connection_.isConnected();
    if (!connected_) return;
    listen();
    // This is known before any signal of a running service. A service that starts later causes nameOwnerChanged.
    owner_ = ownerOn(connection_);
}

// Matching by the service's name would let through signals sent to this client directly. So the slots check the sender.
void SimulatorManager::listen() {
    connection_.connect({}, daemonPath, daemon, QStringLiteral("NameOwnerChanged"), {service}, {}, this,
                        SLOT(nameOwnerChanged(QDBusMessage)));
    connection_.connect({}, {}, localInterface, QStringLiteral("Disconnected"), this, SLOT(busDisconnected()));
    connection_.connect({}, servicePath, service, {}, this, SLOT(serviceSignalled(QDBusMessage)));
}

void SimulatorManager::call(const QString& method, const QVariantList& arguments,
                            std::function<void(const QDBusMessage&)> replied) {
    auto message = QDBusMessage::createMethodCall(service, servicePath, service, method);
    message.setArguments(arguments);
    const auto* const watcher = new QDBusPendingCallWatcher{connection_.asyncCall(message, noTimeLimit), this};
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [replied = std::move(replied)](QDBusPendingCallWatcher* const finished) {
                finished->deleteLater();
                replied(finished->reply());
            });
}

void SimulatorManager::submissionReplied(const QString& token, const QDBusMessage& reply) {
    if (isError(reply)) {
        fail(token, QStringLiteral("The extension service did not take the request: %1").arg(reply.errorMessage()));
    } else if (reply.service() != owner_) {
        fail(token, serviceWentAway());
    } else if (const auto found = pending_.find(token); found != pending_.end()) {
        found->second.acceptedBy = reply.service();
    }
}

void SimulatorManager::answerReplacement(const QString& token, const OSSystemExtensionReplacementAction action) {
    if (pending_.find(token) == pending_.end()) return;
    call(QStringLiteral("AnswerReplacement"), {token, nameOf(action)}, [this, token](const QDBusMessage& reply) {
        if (!isError(reply)) return;
        fail(token, QStringLiteral("The extension service did not take the answer to its question: %1")
                        .arg(reply.errorMessage()));
    });
}

void SimulatorManager::nameOwnerChanged(const QDBusMessage& signal) {
    if (signal.service() != daemon || signal.signature() != QLatin1String{"sss"}) return;
    const auto arguments = signal.arguments();
    if (arguments.at(0).toString() != service) return;
    const auto gone = arguments.at(1).toString();
    owner_ = arguments.at(2).toString();
    failWhere([&](const Pending& pending) { return !gone.isEmpty() && pending.acceptedBy == gone; }, serviceWentAway());
}

void SimulatorManager::busDisconnected() {
    connected_ = false;
    failWhere([](const Pending&) { return true; },
              QStringLiteral("The session bus went away before the extension service answered."));
}

void SimulatorManager::serviceSignalled(const QDBusMessage& signal) {
    if (signal.service() != owner_) return;
    if (signal.member() == QLatin1String{"Restarting"} && signal.signature().isEmpty()) {
        QCoreApplication::exit(exitStatusOfRestart);
    } else if (auto received = readAnswer(signal)) {
        answer(received->token, std::move(received->answer));
    }
}

// The work keeps the request alive until its last answer is delivered.
void SimulatorManager::answer(const QString& token, SimulatorAnswer answer) {
    const auto found = pending_.find(token);
    if (found == pending_.end()) return;
    const auto request = found->second.request;
    if (answer.isFinish && request->kind() == OSSystemExtensionRequest::Kind::properties) return;
    if (answer.isLast) pending_.erase(found);
    request->queue().async([manager = QPointer{this}, token, request, deliver = std::move(answer.deliver)] {
        const auto action = deliver(request->delegate().get(), *request);
        if (action && manager) manager->answerReplacement(token, *action);
    });
}

void SimulatorManager::fail(const QString& token, const QString& description) {
    answer(token, unknownError(description));
}

void SimulatorManager::failWhere(const std::function<bool(const Pending&)>& which, const QString& description) {
    std::vector<QString> tokens;
    for (const auto& [token, pending] : pending_)
        if (which(pending)) tokens.push_back(token);
    for (const auto& token : tokens)
        fail(token, description);
}

} // namespace platform
