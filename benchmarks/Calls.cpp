// Calls the extension service as often as it is told, 32 calls at a time, and prints how many were answered a second.
// usage: calls read|change COUNT

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QElapsedTimer>

#include <cstdio>

namespace {

QDBusMessage callOf(const bool changes, const int number) {
    auto call = QDBusMessage::createMethodCall("com.kelvra.Simulator1", "/com/kelvra/Simulator1",
                                               "com.kelvra.Simulator1.Control", changes ? "Do" : "ListCopies");
    const QString verb = number % 2 == 0 ? "disable" : "enable";
    if (changes) call << QStringList{verb, "com.kelvra.ip-camera.cmio"} << QByteArray{};
    return call;
}

class Caller : public QObject {
public:
    Caller(const bool changes, const int count) : changes_{changes}, count_{count} {
        for (int i = 0; i < 32; ++i)
            call();
    }

private:
    void call() {
        if (sent_ == count_) return;
        const auto pending = QDBusConnection::sessionBus().asyncCall(callOf(changes_, sent_++));
        connect(new QDBusPendingCallWatcher{pending, this}, &QDBusPendingCallWatcher::finished, this, &Caller::take);
    }
    void take(QDBusPendingCallWatcher* const finished) {
        if (finished->isError()) qFatal("%s", qPrintable(finished->error().message()));
        finished->deleteLater();
        if (++answered_ == count_) return QCoreApplication::quit();
        call();
    }

    const bool changes_;
    const int count_;
    int sent_ = 0;
    int answered_ = 0;
};

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    const int count = std::atoi(argv[2]);
    QElapsedTimer clock;
    clock.start();
    const Caller caller{qstrcmp(argv[1], "change") == 0, count};
    QCoreApplication::exec();
    std::printf("%.2f\n", 1e9 * count / static_cast<double>(clock.nsecsElapsed()));
}
