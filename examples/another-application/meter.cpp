// Meter activates its driver and prints each answer. It exits with 0 if the driver is active, and with 1 if not.

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QTextStream>

constexpr auto service = "com.kelvra.Simulator1";
constexpr auto path = "/com/kelvra/Simulator1";

class Meter : public QObject {
    Q_OBJECT

public:
    /// Subscribes to the answers before it asks for anything.
    void activate(const QString& extension) {
        for (const auto* const answer : {"ReplacementAsked", "NeedsApproval", "Finished", "Failed", "Restarting"})
            bus_.connect(service, path, service, answer, this, SLOT(take(QDBusMessage)));
        const QDBusMessage reply = call("Submit", {"the activation", "activation", extension});
        if (reply.type() == QDBusMessage::ErrorMessage) end(1, reply.errorMessage());
    }

private slots:
    /// The first argument of an answer is the token, "the activation".
    void take(const QDBusMessage& answer) {
        QTextStream{stdout} << "meter: " << answer.member() << "\n";
        if (answer.member() == "ReplacementAsked") call("AnswerReplacement", {"the activation", "replace"});
        if (answer.member() == "Finished") end(0, "the driver is active");
        if (answer.member() == "Failed") end(1, "error " + answer.arguments().value(2).toString());
        if (answer.member() == "Restarting") end(0, "the Mac restarts");
    }

private:
    QDBusMessage call(const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(service, path, service, method);
        message.setArguments(arguments);
        return bus_.call(message);
    }
    void end(int status, const QString& why) {
        QTextStream{stdout} << "meter: " << why << "\n";
        QMetaObject::invokeMethod(
            this, [status] { QCoreApplication::exit(status); }, Qt::QueuedConnection);
    }

    QDBusConnection bus_ = QDBusConnection::sessionBus();
};

int main(int argc, char** argv) {
    QCoreApplication application{argc, argv};
    Meter meter;
    meter.activate("com.example.meter.driver");
    return QCoreApplication::exec();
}

#include "meter.moc"
