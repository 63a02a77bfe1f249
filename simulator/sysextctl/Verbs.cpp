#include "simulator/sysextctl/Verbs.h"

#include "simulator/sysextctl/Arguments.h"
#include "simulator/sysextctl/CopyList.h"
#include "simulator/sysextctl/Details.h"
#include "simulator/sysextctl/FaultOrder.h"

#include <algorithm>

namespace simulator::ctl {

namespace {

constexpr qint64 defaultTimeout = 30'000;

Command readList(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto form = arguments.takeFlag("--json") ? Form::json : Form::text;
    arguments.expect(0, 1);
    if (arguments.count() == 0) return ListCopies{{}, form};
    const auto category = categoryNamed(arguments.at(0));
    if (category.isEmpty()) arguments.reject("category", arguments.at(0), shortCategories());
    return ListCopies{category, form};
}

Command readRequests(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto form = arguments.takeFlag("--json") ? Form::json : Form::text;
    arguments.expect(0, 0);
    return ListRequests{form};
}

Command readWait(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto timeout = arguments.takeDuration("--timeout").value_or(defaultTimeout);
    arguments.expect(2, 2);
    return WaitFor{arguments.at(0),
                   arguments.oneOf(1, "state", {"absent", "enabled", "waiting", "disabled", "uninstalling"}), timeout};
}

template <Deed deed>
Command readDeed(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(1, 1);
    return ActOn{deed, arguments.at(0)};
}

template <typename Plain>
Command readPlain(const Verb& verb, const QStringList& given) {
    Arguments{verb, given}.expect(0, 0);
    return Plain{};
}

Command readInstall(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(3, 4);
    const auto condition = arguments.count() == 3
                               ? QStringLiteral("enabled")
                               : arguments.oneOf(3, "state", {"enabled", "waiting", "disabled", "uninstalling"});
    return Install{arguments.at(0), arguments.at(1), arguments.at(2), condition};
}

Command readUninstall(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(2, 2);
    return Uninstall{arguments.at(0), arguments.at(1)};
}

Command readApplications(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(0, given.size());
    if (given.contains(QString{})) arguments.rejectUse();
    return Applications{given};
}

Command readDeveloper(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(0, 1);
    if (arguments.count() == 0) return DeveloperMode{};
    return DeveloperMode{arguments.oneOf(0, "mode", {"on", "off"}) == u"on"};
}

Command readProfile(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto remove = arguments.takeFlag("--remove");
    arguments.expect(0, remove ? 0 : 1);
    if (remove) return Profile{Profile::Purpose::remove, {}};
    if (arguments.count() == 0) return Profile{};
    return Profile{Profile::Purpose::set, arguments.at(0)};
}

Command readAdvance(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(1, 1);
    return Advance{arguments.durationAt(0)};
}

Command readSwitch(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    arguments.expect(0, 2);
    return Switch{arguments.count() > 0 ? arguments.at(0) : QString{},
                  arguments.count() > 1 ? arguments.at(1) : QString{}};
}

Command readPlay(const Verb& verb, const QStringList& given) {
    Arguments arguments{verb, given};
    const auto onBus = arguments.takeFlag("--bus");
    arguments.expect(1, 1);
    return Play{arguments.at(0), onBus};
}

using Role = Verb::Role;

std::vector<Verb> verbsThatShow() {
    return {
        {Role::shows, "list", "[CATEGORY] [--json]", "shows every copy of every extension",
         "CATEGORY is cmio, driver_extension, endpoint_security or network_extension.\n"
         "The stars say whether a copy is enabled and whether it runs. With --json it prints an array of objects with\n"
         "category, team, identifier, shortVersion, version, name, state, condition, enabled, active, number and\n"
         "application, which is the bundle that it came from.\n",
         readList},
        {Role::shows, "requests", "[--json]", "shows what applications have asked and not been told yet",
         details::requests, readRequests},
        {Role::shows, "wait", "ID STATE [--timeout TIME]", "waits until a copy is in a state",
         "STATE is absent, enabled, waiting, disabled or uninstalling; any copy of ID counts.\n"
         "Ends with 1 if that does not happen within TIME (30 s if it is left out), which is a number with ms, s, m, "
         "h\n"
         "or d; seconds if there is none.\n",
         readWait},
        {Role::shows, "watch", "", "prints what happens as it happens, until it is interrupted", details::watch,
         readPlain<Watch>},
    };
}

std::vector<Verb> verbsOfThePerson() {
    return {
        {Role::person, "allow", "ID", "allows the extension that waits for approval", details::allow,
         readDeed<Deed::allow>},
        {Role::person, "deny", "ID", "denies the extension that waits for approval", details::deny,
         readDeed<Deed::deny>},
        {Role::person, "authorize", "ID", "answers the administrator's question about ID with yes", details::authorize,
         readDeed<Deed::authorize>},
        {Role::person, "refuse", "ID", "answers the administrator's question about ID with no", details::refuse,
         readDeed<Deed::refuse>},
        {Role::person, "disable", "ID", "switches an enabled extension off", details::disable, readDeed<Deed::disable>},
        {Role::person, "enable", "ID", "switches an extension on that was switched off", details::enable,
         readDeed<Deed::enable>},
    };
}

std::vector<Verb> verbsOfTheMachine() {
    return {
        {Role::machine, "restart", "", "restarts the simulated Mac, which ends every application", details::restart,
         readPlain<Restart>},
        {Role::machine, "reset", "", "takes away every copy, approval, request and fault; settings stay",
         details::reset, readPlain<Reset>},
        {Role::machine, "install", "ID SHORT BUILD [STATE]", "puts a copy there without a request",
         "STATE is enabled (the default; the approval is recorded), waiting, disabled or uninstalling.\n"
         "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004\n",
         readInstall},
        {Role::machine, "uninstall", "TEAM ID", "removes an extension; TEAM - stands for any", details::uninstall,
         readUninstall},
    };
}

std::vector<Verb> verbsOfItsRules() {
    return {
        {Role::machine, "applications", "[FOLDER...]", "sets the Applications folders, or shows them",
         "An application may activate extensions only from inside one of them. The extensions that have an ID are\n"
         "those of the applications there, and those that were ever on this Mac.\n"
         "Example: sysextctl applications /Applications ~/Applications\n",
         readApplications},
        {Role::machine, "developer", "[on|off]", "switches developer mode, or says whether it is on",
         details::developer, readDeveloper},
        {Role::machine, "profile", "[FILE | --remove]", "brings a management profile, takes it away, or prints it",
         details::profile, readProfile},
        {Role::machine, "advance", "TIME", "moves the simulated clock on and prints its reading in seconds",
         "TIME is a number with ms, s, m, h or d; seconds if there is none.\n", readAdvance},
        {Role::machine, "switch", "[NAME [VALUE]]", "decides what no source settles about the real system",
         details::ofSwitch(), readSwitch},
    };
}

std::vector<Verb> verbsOfFaults() {
    return {
        {Role::faults, "fault", "next KIND FAULT", "orders a fault for the next request",
         "KIND is activate, deactivate, properties or any. FAULT is one of\n"
         "  CODE [TEXT] [--domain D]  fails with that error\n"
         "  after TIME                is answered that much later on the simulated clock\n"
         "  silent                    is never answered\n"
         "  hollow                    finishes although nothing runs; not of properties\n"
         "  noprompt                  waits for the user without saying so; only of an activation\n"
         "  crash                     the service dies when it has begun\n"
         "Example: sysextctl fault next activate 8 \"code signature invalid\"\n",
         readFault},
    };
}

std::vector<Verb> verbsOfScenarios() {
    return {
        {Role::scenarios, "play", "FILE [--bus]", "plays a scenario on a Mac of its own, or on the service",
         details::ofPlay(), readPlay},
    };
}

std::vector<Verb> everyVerb() {
    std::vector<Verb> all;
    for (const auto group :
         {verbsThatShow, verbsOfThePerson, verbsOfTheMachine, verbsOfItsRules, verbsOfFaults, verbsOfScenarios}) {
        const auto verbs = group();
        all.insert(all.end(), verbs.begin(), verbs.end());
    }
    return all;
}

} // namespace

const std::vector<Verb>& verbs() {
    static const auto all = everyVerb();
    return all;
}

const Verb* verbNamed(const QString& name) {
    const auto found =
        std::find_if(verbs().begin(), verbs().end(), [&name](const Verb& verb) { return verb.name == name; });
    return found == verbs().end() ? nullptr : &*found;
}

} // namespace simulator::ctl
