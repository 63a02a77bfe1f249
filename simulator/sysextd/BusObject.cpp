#include "simulator/sysextd/BusObject.h"

#include "simulator/bus/Names.h"
#include "simulator/core/Limits.h"
#include "simulator/disk/ProfileReader.h"
#include "simulator/disk/RealDisk.h"
#include "simulator/sysextd/Conversions.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <utility>

namespace simulator {

namespace {

Refusal invalid(const QString& message) {
    return {Refusal::Kind::invalidArgument, message.toStdString()};
}

/// As Machine takes them. Too many, and what is not absolute, are left as they are, to be refused there.
std::vector<std::string> canonicalFolders(const QStringList& folders) {
    std::vector<std::string> paths;
    const bool areTooMany = static_cast<std::size_t>(folders.size()) > limits::folders;
    for (const QString& folder : folders) {
        const std::string path = folder.toStdString();
        const bool isAbsolute = folder.startsWith('/') && path.size() <= limits::path;
        paths.push_back(isAbsolute && !areTooMany ? canonicalPath(path) : path);
    }
    return paths;
}

/// A message may quote what a caller sent, of any length and with anything in it.
QString oneShortLine(const std::string& message) {
    constexpr qsizetype longest = 200;
    QString line = QString::fromStdString(message).left(longest + 1);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control) character = ' ';
    }
    return line.size() > longest ? line.left(longest - 1) + QChar{0x2026} : line;
}

} // namespace

BusObject::BusObject(const QDBusConnection& bus, Service& service, uid_t owner)
    : bus_{bus}, service_{service}, clients_{bus, owner} {
    connect(&service_, &Service::answered, this, &BusObject::send);
    connect(&service_, &Service::happened, this, &BusObject::tell);
    connect(&service_, &Service::changed, this, &BusObject::Changed);
    connect(&service_, &Service::restarting, this, &BusObject::Restarting);
    connect(&service_, &Service::dying, this, &BusObject::flush);
    connect(&clients_, &Clients::left, this, &BusObject::clientLeft);
}

void BusObject::send(const Answer& answer) {
    bus_.send(messageOf(answer));
}

/// The bus takes what it is sent in order: once it answers, it has everything.
void BusObject::flush() {
    bus_.interface()->isServiceRegistered(serviceName);
}

void BusObject::tell(const simulator::Event& event) {
    emit Event(event.time, QString::fromStdString(event.identifier), QString::fromStdString(event.text));
}

void BusObject::clientLeft(const QString& name) {
    service_.perform([&](Machine& machine) -> Verdict {
        machine.clientLeft(name.toStdString());
        return done;
    });
}

bool BusObject::mayCall() {
    const QString client = message().service();
    if (!clients_.isOurs(client)) {
        sendErrorReply(QString{errorPrefix} + "NotPermitted", "only the user whose machine it is may use it");
        return false;
    }
    if (gate_.admits(client)) return true;
    refuse({Refusal::Kind::limitExceeded, "too many calls at once"});
    return false;
}

void BusObject::refuse(const Refusal& refusal) {
    sendErrorReply(errorName(refusal.kind), oneShortLine(refusal.message));
}

void BusObject::perform(const std::function<Verdict(Machine&)>& deed) {
    if (!mayCall()) return;
    if (const Verdict verdict = service_.perform(deed)) refuse(*verdict);
}

void BusObject::perform(Verdict (Machine::*deed)(const std::string&), const QString& identifier) {
    perform([&](Machine& machine) { return (machine.*deed)(identifier.toStdString()); });
}

// What applications ask ----------------------------------------------------------------------------------------------

void BusObject::Submit(const QString& token, const QString& kind, const QString& identifier) {
    perform([&](Machine& machine) -> Verdict {
        const auto known = requestKindNamed(kind.toStdString());
        if (!known) return invalid("'" + kind + "' is no kind of request");
        const QString client = message().service();
        return machine.submit({client.toStdString(), token.toStdString(), clients_.bundleOf(client).toStdString(),
                               *known, identifier.toStdString()});
    });
}

void BusObject::AnswerReplacement(const QString& token, const QString& action) {
    perform([&](Machine& machine) -> Verdict {
        if (action != "replace" && action != "cancel") return invalid("'" + action + "' is neither replace nor cancel");
        return machine.answerReplacement(message().service().toStdString(), token.toStdString(), action == "replace");
    });
}

// What is there ------------------------------------------------------------------------------------------------------

QList<CopyEntry> BusObject::ListCopies() {
    return mayCall() ? copyEntries(service_.machine().state()) : QList<CopyEntry>{};
}

QList<RequestEntry> BusObject::ListRequests() {
    return mayCall() ? requestEntries(service_.machine()) : QList<RequestEntry>{};
}

QList<SwitchEntry> BusObject::ListSwitches() {
    return mayCall() ? switchEntries(service_.machine().state().settings) : QList<SwitchEntry>{};
}

QStringList BusObject::ListIdentifiers() {
    QStringList identifiers;
    if (!mayCall()) return identifiers;
    for (const std::string& identifier : service_.machine().identifiers()) {
        identifiers.push_back(QString::fromStdString(identifier));
    }
    return identifiers;
}

QStringList BusObject::GetApplicationsFolders() {
    QStringList folders;
    if (!mayCall()) return folders;
    for (const std::string& folder : service_.machine().state().settings.applicationsFolders) {
        folders.push_back(QString::fromStdString(folder));
    }
    return folders;
}

bool BusObject::GetDeveloperMode() {
    return mayCall() && service_.machine().state().settings.developerMode;
}

QByteArray BusObject::GetProfile() {
    return mayCall() ? QByteArray::fromStdString(service_.machine().state().settings.profile.source) : QByteArray{};
}

// The person and the machine -----------------------------------------------------------------------------------------

void BusObject::Allow(const QString& identifier) {
    perform(&Machine::allow, identifier);
}

void BusObject::Deny(const QString& identifier) {
    perform(&Machine::deny, identifier);
}

void BusObject::Authorize(const QString& identifier) {
    perform(&Machine::authorize, identifier);
}

void BusObject::Refuse(const QString& identifier) {
    perform(&Machine::refuse, identifier);
}

void BusObject::Disable(const QString& identifier) {
    perform(&Machine::disable, identifier);
}

void BusObject::Enable(const QString& identifier) {
    perform(&Machine::enable, identifier);
}

void BusObject::Restart() {
    perform([](Machine& machine) -> Verdict {
        machine.restart();
        return done;
    });
}

void BusObject::Reset() {
    perform([](Machine& machine) -> Verdict {
        machine.reset();
        return done;
    });
}

void BusObject::Install(const QString& identifier, const QString& shortVersion, const QString& version,
                        const QString& condition) {
    perform([&](Machine& machine) {
        return machine.install(identifier.toStdString(), {shortVersion.toStdString(), version.toStdString()},
                               condition.toStdString());
    });
}

void BusObject::Uninstall(const QString& team, const QString& identifier) {
    perform([&](Machine& machine) { return machine.uninstall(team.toStdString(), identifier.toStdString()); });
}

void BusObject::SetApplicationsFolders(const QStringList& folders) {
    perform([&](Machine& machine) { return machine.setApplicationsFolders(canonicalFolders(folders)); });
}

void BusObject::SetDeveloperMode(bool on) {
    perform([&](Machine& machine) -> Verdict {
        machine.setDeveloperMode(on);
        return done;
    });
}

void BusObject::SetProfile(const QByteArray& profile) {
    perform([&](Machine& machine) -> Verdict {
        if (static_cast<std::size_t>(profile.size()) > limits::profile) return invalid("the profile is too long");
        auto read = readProfile(profile.toStdString());
        if (const auto* const refusal = std::get_if<Refusal>(&read)) return *refusal;
        machine.setProfile(std::get<Profile>(std::move(read)));
        return done;
    });
}

qlonglong BusObject::Advance(qlonglong milliseconds) {
    perform([&](Machine& machine) { return machine.advance(milliseconds); });
    return service_.machine().state().clock;
}

void BusObject::SetSwitch(const QString& name, const QString& value) {
    perform([&](Machine& machine) { return machine.setSwitch(name.toStdString(), value.toStdString()); });
}

void BusObject::OrderFault(const QString& kind, const QString& fault, const QString& domain, qlonglong code,
                           const QString& description, qlonglong milliseconds) {
    perform([&](Machine& machine) -> Verdict {
        const auto known = faultKindNamed(fault.toStdString());
        const auto request = requestKindNamed(kind.toStdString());
        if (!known) return invalid("'" + fault + "' is no fault");
        if (!request && kind != "any") return invalid("'" + kind + "' is no kind of request");
        const std::string where = domain.isEmpty() ? std::string{extensionErrorDomain} : domain.toStdString();
        return machine.orderFault({*known, request, {where, code, description.toStdString()}, milliseconds});
    });
}

} // namespace simulator
