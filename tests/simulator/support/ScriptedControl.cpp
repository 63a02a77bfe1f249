#include "tests/simulator/support/ScriptedControl.h"

#include "simulator/bus/Types.h"

#include <stdexcept>
#include <utility>

namespace simulator::tests {

ScriptedControl::ScriptedControl(QDBusConnection bus) : bus_{std::move(bus)} {
    registerTypes();
    bus_.registerObject(objectPath, this, QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
    comeBack();
}

ScriptedControl::~ScriptedControl() {
    bus_.unregisterObject(objectPath);
}

void ScriptedControl::show(QList<CopyEntry> copies) {
    copies_ = std::move(copies);
    emit Changed();
}

void ScriptedControl::showRequests(QList<RequestEntry> requests) {
    requests_ = std::move(requests);
    emit Changed();
}

void ScriptedControl::refuse(const QString& what, const QString& error, const QString& message) {
    refusals_[what] = {errorPrefix + error, message};
}

void ScriptedControl::ignore(const QString& what) {
    ignored_ += what;
}

void ScriptedControl::leave() {
    bus_.unregisterService(serviceName);
}

void ScriptedControl::comeBack() {
    if (!bus_.registerService(serviceName)) throw std::runtime_error{"the service's name is taken"};
}

void ScriptedControl::ask(const QString& what) {
    ++asked_[what];
    if (refusals_.contains(what)) sendErrorReply(refusals_[what].error, refusals_[what].message);
    if (ignored_.contains(what)) setDelayedReply(true);
}

QList<CopyEntry> ScriptedControl::ListCopies() {
    ask("ListCopies");
    return copies_;
}

QList<RequestEntry> ScriptedControl::ListRequests() {
    ask("ListRequests");
    return requests_;
}

QStringList ScriptedControl::ListIdentifiers() {
    ask("ListIdentifiers");
    return identifiers;
}

QByteArray ScriptedControl::Do(const QStringList& words, const QByteArray& contents) {
    deeds_ += words.join(u' ');
    ask(words.first());
    return contents;
}

CopyEntry copyIn(const QString& condition, const QString& identifier, const QString& shortVersion,
                 const QString& version) {
    static const QHash<QString, QString> states{
        {"preparing", "validating"},
        {"waiting", "activated waiting for user"},
        {"enabled", "activated enabled"},
        {"disabled", "activated disabled"},
        {"uninstalling", "terminated waiting to uninstall on reboot"},
    };
    CopyEntry copy;
    const auto isCamera = identifier.endsWith("cmio");
    copy.category = isCamera ? "com.apple.system_extension.cmio" : "com.apple.system_extension.driver_extension";
    copy.team = "KELVRA0001";
    copy.identifier = identifier;
    copy.shortVersion = shortVersion;
    copy.version = version;
    copy.name = isCamera ? "Camera" : "Network";
    copy.state = states.value(condition);
    copy.condition = condition;
    copy.enabled = condition == u"enabled";
    copy.active = copy.enabled || condition == u"waiting";
    return copy;
}

} // namespace simulator::tests
