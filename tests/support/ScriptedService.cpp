#include "tests/support/ScriptedService.h"

#include <QDBusArgument>
#include <QDBusMetaType>

#include <stdexcept>

namespace tests {

QDBusArgument& operator<<(QDBusArgument& argument, const CopyOnTheBus& copy) {
    argument.beginStructure();
    argument << copy.identifier << copy.shortVersion << copy.version << copy.enabled << copy.awaiting
             << copy.uninstalling;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, CopyOnTheBus&) {
    return argument;
}

namespace {

const QString serviceName = QStringLiteral("com.kelvra.Simulator1");
const QString path = QStringLiteral("/com/kelvra/Simulator1");

} // namespace

ScriptedService::ScriptedService(const QString& busAddress, const Owns owns)
    : connectionName_{QStringLiteral("scripted service %1").arg(reinterpret_cast<quintptr>(this))},
      connection_{QDBusConnection::connectToBus(busAddress, connectionName_)} {
    if (!connection_.registerVirtualObject(path, this)) throw std::runtime_error{"the scripted service has no bus"};
    if (owns == Owns::theName) takeName();
}

ScriptedService::~ScriptedService() {
    die();
}

bool ScriptedService::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    received_.push_back(message);
    if (finishesFirst_) {
        signal(message.service(), QStringLiteral("Finished"), {message.arguments().at(0), qlonglong{0}});
    }
    if (calls_ == Calls::areTaken) connection.send(message.createReply());
    if (calls_ == Calls::areRefused) {
        connection.send(message.createErrorReply(QStringLiteral("com.kelvra.Simulator1.Error.LimitExceeded"),
                                                 QStringLiteral("too many requests")));
    }
    if (finishesFirst_) flush();
    return true;
}

void ScriptedService::takeName() {
    if (!connection_.registerService(serviceName)) throw std::runtime_error{"the name is taken"};
}

void ScriptedService::releaseName() {
    connection_.unregisterService(serviceName);
}

void ScriptedService::die() {
    connection_ = QDBusConnection{QString{}};
    QDBusConnection::disconnectFromBus(connectionName_);
}

void ScriptedService::signal(const QString& client, const QString& member, const QVariantList& arguments) const {
    auto message = QDBusMessage::createTargetedSignal(client, path, serviceName, member);
    message.setArguments(arguments);
    connection_.send(message);
}

void ScriptedService::broadcast(const QString& member, const QVariantList& arguments) const {
    auto message = QDBusMessage::createSignal(path, serviceName, member);
    message.setArguments(arguments);
    connection_.send(message);
}

void ScriptedService::forgeOwnerChange(const QString& client, const QString& from, const QString& to) const {
    auto message =
        QDBusMessage::createTargetedSignal(client, QStringLiteral("/org/freedesktop/DBus"),
                                           QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"));
    message << serviceName << from << to;
    connection_.send(message);
}

void ScriptedService::flush() const {
    connection_.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                    QStringLiteral("/org/freedesktop/DBus"),
                                                    QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
}

QVariant onTheBus(const CopyOnTheBus& copy) {
    qDBusRegisterMetaType<CopyOnTheBus>();
    return QVariant::fromValue(copy);
}

QVariant onTheBus(const QList<CopyOnTheBus>& copies) {
    qDBusRegisterMetaType<CopyOnTheBus>();
    qDBusRegisterMetaType<QList<CopyOnTheBus>>();
    return QVariant::fromValue(copies);
}

} // namespace tests
