#include "simulator/sysextctl/Watching.h"

#include "simulator/bus/Names.h"
#include "simulator/client/WhenAnswered.h"
#include "simulator/sysextctl/Duration.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/Print.h"
#include "simulator/sysextctl/ServiceError.h"

#include <csignal>

#include <unistd.h>

namespace simulator::ctl {

QString eventLine(qint64 time, const QString& identifier, const QString& text) {
    const auto subject = identifier.isEmpty() ? QStringLiteral("-") : identifier;
    return inSeconds(time) + u'\t' + oneLine(subject) + u'\t' + oneLine(text) + u'\n';
}

Watching::Watching(const QDBusConnection& bus)
    : control_{serviceName, objectPath, bus}, presence_{bus}, reader_{STDOUT_FILENO, QSocketNotifier::Exception} {
    connect(&control_, &ComKelvraSimulator1ControlInterface::Event, this,
            [this](qlonglong time, const QString& identifier, const QString& text) {
                write(eventLine(time, identifier, text));
            });
    // As the next line would, which may be long in coming.
    connect(&reader_, &QSocketNotifier::activated, this, [] { std::raise(SIGPIPE); });
    connect(&presence_, &ServicePresence::went, this, [this] { write("-\t-\tthe service is gone\n"); });
    connect(&presence_, &ServicePresence::came, this, [this] { write("-\t-\tthe service is there\n"); });
    connect(&presence_, &ServicePresence::busLost, this, [this] { end({exitCode::notDone, "the bus is gone"}); });
}

void Watching::run() {
    // The first question starts the service; its answer tells that from here on nothing is missed.
    whenAnswered(control_.ListIdentifiers(), *this, [this](const QDBusPendingReply<QStringList>& answer) {
        if (answer.isError()) return end(failureOf(answer.error()));
        write("-\t-\twatching\n");
    });
    loop_.exec();
    if (failure_) throw CommandFailure{*failure_};
}

void Watching::write(const QString& line) {
    if (!print(line)) end({exitCode::notDone, "standard output takes no more"});
}

void Watching::end(const CommandFailure& failure) {
    if (!failure_) failure_ = failure;
    loop_.quit();
}

} // namespace simulator::ctl
