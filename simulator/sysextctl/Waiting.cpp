#include "simulator/sysextctl/Waiting.h"

#include "simulator/bus/Names.h"
#include "simulator/client/WhenAnswered.h"
#include "simulator/sysextctl/CopyList.h"
#include "simulator/sysextctl/Duration.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/ServiceError.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace simulator::ctl {

namespace {

/// A service that dies on every look is started by looking no more often than this.
constexpr int looksThatMayFail = 3;

CommandFailure notReached(const WaitFor& wanted) {
    return {exitCode::notDone, oneLine(QStringLiteral("%1 is not %2 after %3 s")
                                           .arg(wanted.identifier, wanted.condition, inSeconds(wanted.timeout)))};
}

bool isBusLost(const QDBusError& error) {
    return error.type() == QDBusError::Disconnected;
}

bool wasNotThere(const QDBusError& error) {
    return error.type() == QDBusError::ServiceUnknown;
}

bool hasDied(const QDBusError& error) {
    return error.type() == QDBusError::NoReply;
}

} // namespace

Waiting::Waiting(const QDBusConnection& bus, WaitFor wanted)
    : wanted_{std::move(wanted)}, control_{serviceName, objectPath, bus}, presence_{bus} {
    connect(&control_, &ComKelvraSimulator1ControlInterface::Changed, this, &Waiting::look);
    connect(&presence_, &ServicePresence::came, this, &Waiting::look);
    connect(&presence_, &ServicePresence::went, this, [this] {
        if (failedLooks_ < looksThatMayFail) look();
    });
    connect(&presence_, &ServicePresence::busLost, this, [this] { fail({exitCode::notDone, "the bus is gone"}); });
}

void Waiting::run() {
    QTimer timer;
    timer.setSingleShot(true);
    timer.callOnTimeout(this, [this] { fail(notReached(wanted_)); });
    timer.start(std::chrono::milliseconds{wanted_.timeout});
    checkIdentifier();
    loop_.exec();
    if (failure_) throw CommandFailure{*failure_};
}

void Waiting::checkIdentifier() {
    looking_ = true;
    whenAnswered(control_.ListIdentifiers(), *this, [this](const QDBusPendingReply<QStringList>& answer) {
        looking_ = false;
        if (answer.isError()) return fail(failureOf(answer.error()));
        if (answer.value().contains(wanted_.identifier)) return look();
        fail({exitCode::notUnderstood, oneLine(wanted_.identifier + ": no such extension")});
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
    if (isInCondition(answer.value(), wanted_.identifier, wanted_.condition)) return finish();
    if (changedMeanwhile_) look();
}

void Waiting::lookFailed(const QDBusError& error) {
    if (isBusLost(error)) return fail(failureOf(error));
    if (wasNotThere(error)) {
        // Word that the service came may overtake word that it was not there.
        if (changedMeanwhile_) look();
        return;
    }
    ++failedLooks_;
    if (hasDied(error) && failedLooks_ < looksThatMayFail) look();
}

void Waiting::finish() {
    loop_.quit();
}

void Waiting::fail(const CommandFailure& failure) {
    if (!failure_) failure_ = failure;
    finish();
}

} // namespace simulator::ctl
