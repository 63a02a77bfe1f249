#include "platform/linux/SimulatorClient.h"

#include <QDBusError>
#include <QVariantList>

#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr QLatin1String service{"com.kelvra.Simulator1"};
constexpr QLatin1String servicePath{"/com/kelvra/Simulator1"};
constexpr QLatin1String serviceInterface{"com.kelvra.Simulator1"};

constexpr QLatin1String daemon{"org.freedesktop.DBus"};
constexpr QLatin1String daemonPath{"/org/freedesktop/DBus"};
constexpr QLatin1String localInterface{"org.freedesktop.DBus.Local"};

QString nameOf(const OSSystemExtensionRequest::Kind kind) {
    switch (kind) {
    case OSSystemExtensionRequest::Kind::properties:
        return QStringLiteral("properties");
    case OSSystemExtensionRequest::Kind::activation:
        return QStringLiteral("activation");
    case OSSystemExtensionRequest::Kind::deactivation:
        return QStringLiteral("deactivation");
    }
    return {};
}

QString nameOf(const OSSystemExtensionReplacementAction action) {
    return action == OSSystemExtensionReplacementAction::replace ? QStringLiteral("replace") : QStringLiteral("cancel");
}

QDBusMessage serviceCall(const QString& method, const QVariantList& arguments) {
    auto message = QDBusMessage::createMethodCall(service, servicePath, serviceInterface, method);
    message.setArguments(arguments);
    return message;
}

QString serviceWentAway() {
    return QStringLiteral("The extension service went away before it answered.");
}

bool isError(const QDBusMessage& reply) {
    return reply.type() == QDBusMessage::ErrorMessage;
}

} // namespace

SimulatorClient::SimulatorClient(const QString& address, Listener listener)
    : listener_{std::move(listener)},
      connectionName_{QStringLiteral("simulator client %1").arg(reinterpret_cast<quintptr>(this))},
      connection_{QDBusConnection::connectToBus(address, connectionName_)},
      connected_{connection_.isConnected()} {
    if (!connected_) return;
    listen();
    findOwner();
}

SimulatorClient::~SimulatorClient() {
    QDBusConnection::disconnectFromBus(connectionName_);
}

// A connection by the service's name would look up its owner and wait for the daemon, and would pass on signals that
// anyone sends to this client alone. So signals are taken from anyone, and their sender is looked at here.
void SimulatorClient::listen() {
    connection_.connect({}, daemonPath, daemon, QStringLiteral("NameOwnerChanged"), {service}, {}, this,
                        SLOT(nameOwnerChanged(QDBusMessage)));
    connection_.connect({}, {}, localInterface, QStringLiteral("Disconnected"), this, SLOT(busDisconnected()));
    connection_.connect({}, servicePath, serviceInterface, {}, this, SLOT(serviceSignalled(QDBusMessage)));
}

// Asked before the first submission, it is answered before any signal of a service that runs already; one that starts
// later announces itself as nameOwnerChanged. The word of the answer may still be overtaken: a reply that is there
// before it is watched takes one turn of the main loop more than a signal.
void SimulatorClient::findOwner() {
    auto message = QDBusMessage::createMethodCall(daemon, daemonPath, daemon, QStringLiteral("GetNameOwner"));
    message.setArguments({QString{service}});
    findingOwner_ = call(message, [this](const QDBusMessage& reply) {
        foundOwner(isError(reply) ? QString{} : reply.arguments().value(0).toString());
    });
}

void SimulatorClient::foundOwner(const QString& owner) {
    findingOwner_.reset();
    owner_ = owner;
    const auto early = std::exchange(earlySignals_, {});
    for (const auto& signal : early)
        serviceSignalled(signal);
}

SimulatorClient::PendingCall SimulatorClient::call(const QDBusMessage& message,
                                                   std::function<void(const QDBusMessage& reply)> replied) {
    PendingCall watcher{std::make_unique<QDBusPendingCallWatcher>(connection_.asyncCall(message), this).release()};
    connect(
        watcher.get(), &QDBusPendingCallWatcher::finished, this,
        [replied = std::move(replied)](const QDBusPendingCallWatcher* const finished) { replied(finished->reply()); });
    return watcher;
}

void SimulatorClient::submit(const QString& token, const OSSystemExtensionRequest::Kind kind,
                             const QString& identifier) {
    auto& pending = pending_[token];
    if (!connected_) {
        fail(token, QStringLiteral("There is no session bus: %1").arg(connection_.lastError().message()));
        return;
    }
    pending.submission = call(serviceCall(QStringLiteral("Submit"), {token, nameOf(kind), identifier}),
                              [this, token](const QDBusMessage& reply) { submissionReplied(token, reply); });
}

void SimulatorClient::submissionReplied(const QString& token, const QDBusMessage& reply) {
    pending_.at(token).submission.reset();
    if (isError(reply)) {
        fail(token, QStringLiteral("The extension service did not take the request: %1").arg(reply.errorMessage()));
    } else if (!findingOwner_ && reply.service() != owner_) {
        fail(token, serviceWentAway());
    } else {
        pending_.at(token).acceptedBy = reply.service();
    }
}

void SimulatorClient::answerReplacement(const QString& token, const OSSystemExtensionReplacementAction action) {
    const auto found = pending_.find(token);
    if (found == pending_.end()) return;
    found->second.replacement = call(serviceCall(QStringLiteral("AnswerReplacement"), {token, nameOf(action)}),
                                     [this, token](const QDBusMessage& reply) { replacementReplied(token, reply); });
}

void SimulatorClient::replacementReplied(const QString& token, const QDBusMessage& reply) {
    pending_.at(token).replacement.reset();
    if (!isError(reply)) return;
    fail(token,
         QStringLiteral("The extension service did not take the answer to its question: %1").arg(reply.errorMessage()));
}

void SimulatorClient::nameOwnerChanged(const QDBusMessage& signal) {
    if (signal.service() != daemon || signal.signature() != QLatin1String{"sss"}) return;
    const auto arguments = signal.arguments();
    if (arguments.at(0).toString() != service) return;
    if (findingOwner_) foundOwner(arguments.at(1).toString());
    const auto gone = std::exchange(owner_, arguments.at(2).toString());
    failWhere([&](const Pending& pending) { return !gone.isEmpty() && pending.acceptedBy == gone; }, serviceWentAway());
}

void SimulatorClient::busDisconnected() {
    connected_ = false;
    failWhere([](const Pending&) { return true; },
              QStringLiteral("The session bus went away before the extension service answered."));
}

void SimulatorClient::serviceSignalled(const QDBusMessage& signal) {
    if (findingOwner_) {
        earlySignals_.push_back(signal);
        return;
    }
    if (signal.service() != owner_) return;
    if (signal.member() == QLatin1String{"Restarting"} && signal.signature().isEmpty()) {
        listener_.restarting();
    } else if (auto received = readAnswer(signal)) {
        answer(received->token, std::move(received->answer));
    }
}

void SimulatorClient::answer(const QString& token, SimulatorAnswer answer) {
    const auto found = pending_.find(token);
    if (found == pending_.end()) return;
    if (isLast(answer)) pending_.erase(found);
    listener_.answered(token, std::move(answer));
}

void SimulatorClient::fail(const QString& token, const QString& description) {
    answer(token, unknownError(description));
}

template <typename Which>
void SimulatorClient::failWhere(const Which which, const QString& description) {
    std::vector<QString> tokens;
    for (const auto& [token, pending] : pending_) {
        if (which(pending)) tokens.push_back(token);
    }
    for (const auto& token : tokens)
        fail(token, description);
}

} // namespace platform
