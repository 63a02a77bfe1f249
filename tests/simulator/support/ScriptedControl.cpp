#include "tests/simulator/support/ScriptedControl.h"

#include "simulator/bus/Names.h"

#include <stdexcept>
#include <utility>

namespace simulator::tests {

ScriptedControl::ScriptedControl(const QDBusConnection& bus) : bus_{bus} {
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

void ScriptedControl::refuse(const QString& method, const QString& error, const QString& message) {
    refusals_[method] = {errorPrefix + error, message};
}

void ScriptedControl::ignore(const QString& method) {
    ignored_ += method;
}

void ScriptedControl::leave() {
    bus_.unregisterService(serviceName);
}

void ScriptedControl::comeBack() {
    if (!bus_.registerService(serviceName)) throw std::runtime_error{"the service's name is taken"};
}

void ScriptedControl::ask(const QString& method) {
    ++asked_[method];
    if (refusals_.contains(method)) sendErrorReply(refusals_[method].error, refusals_[method].message);
    if (ignored_.contains(method)) setDelayedReply(true);
}

void ScriptedControl::deed(const QStringList& words) {
    deeds_ += words.join(u' ');
    ask(words.first());
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

QList<SwitchEntry> ScriptedControl::ListSwitches() {
    ask("ListSwitches");
    return switches;
}

void ScriptedControl::Allow(const QString& identifier) {
    deed({"Allow", identifier});
}

void ScriptedControl::Deny(const QString& identifier) {
    deed({"Deny", identifier});
}

void ScriptedControl::Authorize(const QString& identifier) {
    deed({"Authorize", identifier});
}

void ScriptedControl::Refuse(const QString& identifier) {
    deed({"Refuse", identifier});
}

void ScriptedControl::Disable(const QString& identifier) {
    deed({"Disable", identifier});
}

void ScriptedControl::Enable(const QString& identifier) {
    deed({"Enable", identifier});
}

void ScriptedControl::Restart() {
    deed({"Restart"});
}

void ScriptedControl::Reset() {
    deed({"Reset"});
}

void ScriptedControl::Install(const QString& identifier, const QString& shortVersion, const QString& version,
                              const QString& condition) {
    deed({"Install", identifier, shortVersion, version, condition});
}

void ScriptedControl::Uninstall(const QString& team, const QString& identifier) {
    deed({"Uninstall", team, identifier});
}

void ScriptedControl::SetApplicationsFolders(const QStringList& folders) {
    applicationsFolders = folders;
    deed(QStringList{"SetApplicationsFolders"} + folders);
}

QStringList ScriptedControl::GetApplicationsFolders() {
    ask("GetApplicationsFolders");
    return applicationsFolders;
}

void ScriptedControl::SetDeveloperMode(bool on) {
    deed({"SetDeveloperMode", on ? "on" : "off"});
}

bool ScriptedControl::GetDeveloperMode() {
    ask("GetDeveloperMode");
    return true;
}

void ScriptedControl::SetProfile(const QByteArray& contents) {
    profile = contents;
    deed({"SetProfile"});
}

QByteArray ScriptedControl::GetProfile() {
    ask("GetProfile");
    return profile;
}

qlonglong ScriptedControl::Advance(qlonglong milliseconds) {
    deed({"Advance", QString::number(milliseconds)});
    return milliseconds + 500;
}

void ScriptedControl::SetSwitch(const QString& name, const QString& value) {
    deed({"SetSwitch", name, value});
}

void ScriptedControl::OrderFault(const QString& kind, const QString& fault, const QString& domain, qlonglong code,
                                 const QString& description, qlonglong milliseconds) {
    deed({"OrderFault", kind, fault, domain, QString::number(code), description, QString::number(milliseconds)});
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
