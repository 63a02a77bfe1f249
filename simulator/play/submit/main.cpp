// An application that asks the service what it is told to. It takes orders on standard input and writes what it hears
// to standard output, both as JSON, an object a line:
//
//   {"do": "submit", "token": T, "kind": K, "identifier": I}    is followed by "taken" or "refused"
//   {"do": "answer", "token": T, "action": "replace"|"cancel"}  the same
//   {"do": "hear"}                                              "heard", after all that the bus held for it until now
//
//   {"said": "ready", "name": N}         once, at the start; N is its name on the bus
//   {"said": "taken"}
//   {"said": "refused", "message": M}    the service did not take it
//   {"said": "NeedsApproval", "token": T} and every other signal of the service to its client, see AnswerJson.h
//
// It ends with its input, and when the Mac restarts. As it lies in an application's bundle, it asks on behalf of that.

#include "simulator/bus/Names.h"
#include "simulator/bus/Types.h"
#include "simulator/play/AnswerJson.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QJsonDocument>
#include <QSocketNotifier>

#include <cstdio>

#include <unistd.h>

namespace {

using namespace simulator;

void say(const QJsonObject& object) {
    const QByteArray line = QJsonDocument{object}.toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

class Application : public QObject {
    Q_OBJECT

public:
    Application() : input_{STDIN_FILENO, QSocketNotifier::Read} {
        bus_.connect({}, objectPath, interfaceName, {}, this, SLOT(take(QDBusMessage)));
        connect(&input_, &QSocketNotifier::activated, this, &Application::read);
        say({{"said", "ready"}, {"name", bus_.baseService()}});
    }

private slots:
    void take(const QDBusMessage& signal) {
        if (signal.member() == "Restarting") return QCoreApplication::quit();
        say(play::jsonOf(signal));
    }

private:
    void read() {
        QByteArray bytes{4096, '\0'};
        const ssize_t length = ::read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (length <= 0) return QCoreApplication::quit();
        pending_ += bytes.left(length);
        for (qsizetype end = pending_.indexOf('\n'); end >= 0; end = pending_.indexOf('\n')) {
            obey(QJsonDocument::fromJson(pending_.left(end)).object());
            pending_.remove(0, end + 1);
        }
    }

    void obey(const QJsonObject& order) {
        const QString token = order["token"].toString();
        if (order["do"] == "submit") {
            call("Submit", {token, order["kind"].toString(), order["identifier"].toString()});
        } else if (order["do"] == "answer") {
            call("AnswerReplacement", {token, order["action"].toString()});
        } else {
            // The bus's own answer comes after every signal that it had for this client before.
            reply(QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                 "org.freedesktop.DBus", "GetId"),
                  "heard");
        }
    }

    void call(const QString& method, const QVariantList& arguments) {
        auto message = QDBusMessage::createMethodCall(serviceName, objectPath, interfaceName, method);
        message.setArguments(arguments);
        reply(message, "taken");
    }

    /// Calls and says so once that is answered. A service that dies before it has answered has begun all the same.
    void reply(const QDBusMessage& message, const QString& said) {
        auto* const watcher = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(message), this).release();
        connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, said] {
            const QDBusMessage answer = watcher->reply();
            const bool isRefused = watcher->isError() && watcher->error().type() != QDBusError::NoReply;
            say(isRefused ? QJsonObject{{"said", "refused"}, {"message", answer.errorMessage()}}
                          : QJsonObject{{"said", said}});
            watcher->deleteLater();
        });
    }

    QDBusConnection bus_ = QDBusConnection::sessionBus();
    QSocketNotifier input_;
    QByteArray pending_;
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application{argc, argv};
    registerTypes();
    const Application asks;
    return QCoreApplication::exec();
}

#include "main.moc"
