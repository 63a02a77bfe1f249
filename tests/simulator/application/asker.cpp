// An application that does what it is told on standard input, a line each, and prints what it hears:
//   submit TOKEN KIND IDENTIFIER
//   answer TOKEN replace|cancel

#include "Simulator1Proxy.h"
#include "simulator/bus/Names.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <QTextStream>

#include <unistd.h>

namespace {

using simulator::CopyReport;

void print(const QString& line) {
    QTextStream{stdout} << line << Qt::endl;
}

QString textOf(const CopyReport& copy) {
    const QString flags = copy.enabled                ? "enabled"
                          : copy.awaitingUserApproval ? "awaiting"
                          : copy.uninstalling         ? "uninstalling"
                                                      : "neither";
    return QString{"%1/%2 %3"}.arg(copy.shortVersion, copy.version, flags);
}

void obey(ComKelvraSimulator1Interface& service, const QString& line) {
    const QStringList words = line.split(' ');
    auto reply = words.value(0) == "submit" ? service.Submit(words.value(1), words.value(2), words.value(3))
                                            : service.AnswerReplacement(words.value(1), words.value(2));
    reply.waitForFinished();
    if (reply.isError()) print(words.value(1) + " refused " + reply.error().name());
}

void listen(const ComKelvraSimulator1Interface& service) {
    using Service = ComKelvraSimulator1Interface;
    QObject::connect(&service, &Service::NeedsApproval, [](const QString& token) { print(token + " needs approval"); });
    QObject::connect(&service, &Service::Finished, [](const QString& token, qlonglong result) {
        print(QString{"%1 finished %2"}.arg(token).arg(result));
    });
    QObject::connect(&service, &Service::Failed,
                     [](const QString& token, const QString& domain, qlonglong code, const QString& description) {
                         print(QString{"%1 failed %2 %3 (%4)"}.arg(token, domain).arg(code).arg(description));
                     });
    QObject::connect(&service, &Service::ReplacementAsked,
                     [](const QString& token, const CopyReport& existing, const CopyReport& replacement) {
                         print(token + " replace " + textOf(existing) + " by " + textOf(replacement) + "?");
                     });
    QObject::connect(&service, &Service::FoundProperties, [](const QString& token, const QList<CopyReport>& copies) {
        QString line = token + " found";
        for (const CopyReport& copy : copies)
            line += ", " + textOf(copy);
        print(line);
    });
    QObject::connect(&service, &Service::Restarting, [] { print("restarting"); });
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    simulator::registerTypes();
    ComKelvraSimulator1Interface service{simulator::serviceName, simulator::objectPath, QDBusConnection::sessionBus()};
    listen(service);
    QByteArray pending;
    const QSocketNotifier input{STDIN_FILENO, QSocketNotifier::Read};
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        QByteArray bytes{4096, '\0'};
        const ssize_t length = read(STDIN_FILENO, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (length <= 0) return QCoreApplication::quit();
        pending += bytes.left(length);
        for (qsizetype end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
            const QString line = pending.left(end);
            pending.remove(0, end + 1);
            obey(service, line);
        }
    });
    print("ready");
    return QCoreApplication::exec();
}
