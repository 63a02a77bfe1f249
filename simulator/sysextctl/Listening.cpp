#include "simulator/sysextctl/Listening.h"

#include <QTimer>

#include <chrono>
#include <csignal>
#include <utility>

#include <unistd.h>

namespace simulator::ctl {

namespace {

/// A service that dies on every look is started by looking no more often than this.
constexpr int looksThatMayFail = 3;

} // namespace

// Listening ----------------------------------------------------------------------------------------------------------

Listening::Listening(const QDBusConnection& bus) : control_{serviceName, objectPath, bus}, presence_{bus} {
    connect(&presence_, &ServicePresence::busLost, this, [this] {
        fail({exitCode::notDone, "the session bus is gone"});
    });
}

void Listening::run() {
    begin();
    loop_.exec();
    if (failure_) throw CommandFailure{*failure_};
}

void Listening::fail(const CommandFailure& failure) {
    if (!failure_) failure_ = failure;
    end();
}

// Waiting ------------------------------------------------------------------------------------------------------------

Waiting::Waiting(const QDBusConnection& bus, WaitFor wanted) : Listening{bus}, wanted_{std::move(wanted)} {
    connect(&control_, &ComKelvraSimulator1ControlInterface::Changed, this, &Waiting::look);
    connect(&presence_, &ServicePresence::came, this, &Waiting::look);
    connect(&presence_, &ServicePresence::went, this, [this] {
        if (failedLooks_ < looksThatMayFail) look();
    });
}

void Waiting::begin() {
    QTimer::singleShot(std::chrono::milliseconds{wanted_.timeout}, this, [this] {
        const auto seconds = QString::fromStdString(inSeconds(wanted_.timeout));
        const auto late = QStringLiteral("%1 is not %2 after %3 s").arg(wanted_.identifier, wanted_.state, seconds);
        fail({exitCode::notDone, late});
    });
    looking_ = true;
    whenAnswered(control_.ListIdentifiers(), *this, [this](const QDBusPendingReply<QStringList>& answer) {
        looking_ = false;
        if (answer.isError()) return fail(failureOf(answer.error()));
        if (answer.value().contains(wanted_.identifier)) return look();
        fail({exitCode::notUnderstood, QStringLiteral("\"%1\": no such extension").arg(wanted_.identifier)});
    });
}

void Waiting::look() {
    changedMeanwhile_ = looking_;
    if (looking_) return;
    looking_ = true;
    whenAnswered(control_.ListCopies(), *this,
                 [this](const QDBusPendingReply<QList<CopyEntry>>& answer) { read(answer); });
}

void Waiting::read(const QDBusPendingReply<QList<CopyEntry>>& answer) {
    looking_ = false;
    if (answer.isError()) return lookFailed(answer.error());
    failedLooks_ = 0;
    if (isIn(answer.value(), wanted_.identifier, wanted_.state)) return end();
    if (changedMeanwhile_) look();
}

void Waiting::lookFailed(const QDBusError& error) {
    if (error.type() == QDBusError::Disconnected) return fail(failureOf(error));
    if (error.type() == QDBusError::ServiceUnknown) {
        // Word that the service came may overtake word that it was not there.
        if (changedMeanwhile_) look();
        return;
    }
    ++failedLooks_;
    const bool hasDied = error.type() == QDBusError::NoReply;
    if (hasDied && failedLooks_ < looksThatMayFail) look();
}

// Watching -----------------------------------------------------------------------------------------------------------

Watching::Watching(const QDBusConnection& bus, bool isJson)
    : Listening{bus}, isJson_{isJson}, reader_{STDOUT_FILENO, QSocketNotifier::Exception} {
    connect(&control_, &ComKelvraSimulator1ControlInterface::Event, this,
            [this](qlonglong time, const QString& identifier, const QString& text, const QString& application) {
                write({time, identifier, text, application});
            });
    // As the next line would, which may be long in coming.
    connect(&reader_, &QSocketNotifier::activated, this, [] { std::raise(SIGPIPE); });
    connect(&presence_, &ServicePresence::went, this, [this] { write({{}, {}, "the service stopped", {}}); });
    connect(&presence_, &ServicePresence::came, this, [this] { write({{}, {}, "the service started", {}}); });
}

/// The first question starts the service; its answer tells that from here on nothing is missed.
void Watching::begin() {
    whenAnswered(control_.ListIdentifiers(), *this, [this](const QDBusPendingReply<QStringList>& answer) {
        if (answer.isError()) return fail(failureOf(answer.error()));
        write({{}, {}, "watching", {}}, isJson_ ? QString{} : eventHead);
    });
}

void Watching::write(const EventEntry& event, const QString& head) {
    try {
        say(head + (isJson_ ? asJson(event) : asText(event)));
    } catch (const CommandFailure& failure) {
        fail(failure);
    }
}

} // namespace simulator::ctl
