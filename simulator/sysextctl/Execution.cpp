#include "simulator/sysextctl/Execution.h"

#include "simulator/bus/Names.h"
#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/CopyList.h"
#include "simulator/sysextctl/Duration.h"
#include "simulator/sysextctl/Help.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/Playing.h"
#include "simulator/sysextctl/Print.h"
#include "simulator/sysextctl/RequestList.h"
#include "simulator/sysextctl/ServiceError.h"
#include "simulator/sysextctl/SwitchList.h"
#include "simulator/sysextctl/Waiting.h"
#include "simulator/sysextctl/Watching.h"

#include <QDir>
#include <QFile>

#include <utility>

namespace simulator::ctl {

namespace {

constexpr qint64 largestProfile = 1 << 20;

void say(const QString& text) {
    if (!print(text)) throw CommandFailure{exitCode::notDone, "standard output takes no more"};
}

QByteArray contentsOf(const QString& path) {
    QFile file{path};
    if (!file.open(QIODevice::ReadOnly))
        throw CommandFailure{exitCode::notDone,
                             oneLine(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()))};
    auto contents = file.read(largestProfile + 1);
    if (contents.isEmpty() || contents.size() > largestProfile)
        throw CommandFailure{exitCode::notUnderstood, oneLine(QStringLiteral("%1 is not a profile").arg(path))};
    return contents;
}

} // namespace

Execution::Execution(QDBusConnection bus) : bus_{std::move(bus)}, control_{serviceName, objectPath, bus_} {
}

void Execution::carryOut(const Command& command) {
    std::visit([this](const auto& known) { this->run(known); }, command);
}

void Execution::run(const ShowHelp& command) {
    say(help(command.verb));
}

void Execution::run(const ListCopies& command) {
    const auto copies = copiesOf(answered(control_.ListCopies()).value(), command.category);
    say(command.form == Form::json ? copiesAsJson(copies) : copiesAsText(copies));
}

void Execution::run(const ListRequests& command) {
    const auto requests = answered(control_.ListRequests()).value();
    say(command.form == Form::json ? requestsAsJson(requests) : requestsAsText(requests));
}

void Execution::run(const ActOn& command) {
    switch (command.deed) {
    case Deed::allow:
        answered(control_.Allow(command.identifier));
        break;
    case Deed::deny:
        answered(control_.Deny(command.identifier));
        break;
    case Deed::authorize:
        answered(control_.Authorize(command.identifier));
        break;
    case Deed::refuse:
        answered(control_.Refuse(command.identifier));
        break;
    case Deed::disable:
        answered(control_.Disable(command.identifier));
        break;
    case Deed::enable:
        answered(control_.Enable(command.identifier));
        break;
    }
}

void Execution::run(const Restart&) {
    answered(control_.Restart());
}

void Execution::run(const Reset&) {
    answered(control_.Reset());
}

void Execution::run(const Install& command) {
    answered(control_.Install(command.identifier, command.shortVersion, command.version, command.condition));
}

void Execution::run(const Uninstall& command) {
    answered(control_.Uninstall(command.team, command.identifier));
}

void Execution::run(const WaitFor& command) {
    Waiting{bus_, command}.run();
}

void Execution::run(const Applications& command) {
    if (command.folders.isEmpty()) {
        for (const auto& folder : answered(control_.GetApplicationsFolders()).value())
            say(oneLine(folder) + u'\n');
        return;
    }
    QStringList folders;
    for (const auto& folder : command.folders)
        folders += QDir::cleanPath(QDir::current().absoluteFilePath(folder));
    answered(control_.SetApplicationsFolders(folders));
}

void Execution::run(const DeveloperMode& command) {
    if (command.on)
        answered(control_.SetDeveloperMode(*command.on));
    else
        say(answered(control_.GetDeveloperMode()).value() ? "Developer mode is on\n" : "Developer mode is off\n");
}

void Execution::run(const Profile& command) {
    switch (command.purpose) {
    case Profile::Purpose::show:
        return showProfile();
    case Profile::Purpose::set:
        return setProfile(command.file);
    case Profile::Purpose::remove:
        answered(control_.SetProfile({}));
        return;
    }
}

void Execution::run(const Advance& command) {
    say(inSeconds(answered(control_.Advance(command.milliseconds)).value()) + u'\n');
}

void Execution::run(const OrderFault& command) {
    answered(control_.OrderFault(command.kind, command.fault, command.domain, command.code, command.description,
                                 command.milliseconds));
}

void Execution::run(const Switch& command) {
    if (command.value.isEmpty())
        showSwitches(command.name);
    else
        answered(control_.SetSwitch(command.name, command.value));
}

void Execution::run(const Watch&) {
    Watching{bus_}.run();
}

void Execution::run(const Play& command) {
    say(play(command, bus_));
}

void Execution::showProfile() {
    const auto profile = answered(control_.GetProfile()).value();
    say(profile.isEmpty() ? QStringLiteral("No profile\n") : QString::fromUtf8(profile));
}

void Execution::setProfile(const QString& file) {
    answered(control_.SetProfile(contentsOf(file)));
}

void Execution::showSwitches(const QString& name) {
    const auto all = answered(control_.ListSwitches()).value();
    const auto switches = switchesNamed(all, name);
    if (!name.isEmpty() && switches.isEmpty()) {
        const auto problem = QStringLiteral("unknown switch \"%1\"; there is %2").arg(name, namesOf(all).join(", "));
        throw CommandFailure{exitCode::notUnderstood, oneLine(problem)};
    }
    say(switchesAsText(switches));
}

} // namespace simulator::ctl
