#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

// A service as the bus starts it when somebody calls its name: it finishes the one request that woke it and ends.

namespace {

class OneAnswer final : public QDBusVirtualObject {
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        connection.send(message.createReply());
        auto finished =
            QDBusMessage::createTargetedSignal(message.service(), QStringLiteral("/com/kelvra/Simulator1"),
                                               QStringLiteral("com.kelvra.Simulator1"), QStringLiteral("Finished"));
        finished << message.arguments().value(0).toString() << qlonglong{0};
        connection.send(finished);
        QCoreApplication::quit();
        return true;
    }
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    OneAnswer object;
    auto bus = QDBusConnection::connectToBus(QDBusConnection::ActivationBus, QStringLiteral("starter"));
    if (!bus.registerVirtualObject(QStringLiteral("/com/kelvra/Simulator1"), &object) ||
        !bus.registerService(QStringLiteral("com.kelvra.Simulator1"))) {
        return 1;
    }
    return QCoreApplication::exec();
}
