#include "simulator/sysextctl/Help.h"

#include "simulator/sysextctl/Verbs.h"

#include <QStringList>

namespace simulator::ctl {

namespace {

constexpr auto opening = R"(usage: sysextctl VERB [ARGUMENTS]

Looks at and plays the simulated Mac on which applications activate their system extensions: the list of
extensions, the person who allows or denies, and the machine that restarts. ID is an extension's bundle
identifier, such as com.kelvra.ip-camera.cmio.
)";

constexpr auto closing = R"(
"sysextctl VERB --help" says more about a verb.

Five minutes: press Activate in the application; then
  sysextctl list                                  shows the new copy, waiting for the user
  sysextctl allow com.kelvra.ip-camera.cmio       is the press of Allow in System Settings
  sysextctl wait com.kelvra.ip-camera.cmio enabled
  sysextctl restart                               ends the application; what was deferred happens
  sysextctl reset                                 begins anew

Ends with 0 if it was done, 1 if it was not (nothing waits, not reached, no service), and 2 if the verb, a
state, an identifier or another argument is unknown; what went wrong is one line on standard error.
)";

QString head(Verb::Role role) {
    switch (role) {
    case Verb::Role::shows:
        return QStringLiteral("What is there, and what happens");
    case Verb::Role::person:
        return QStringLiteral("The person in front of the Mac");
    case Verb::Role::machine:
        return QStringLiteral("The machine");
    case Verb::Role::faults:
        return QStringLiteral("What goes wrong");
    case Verb::Role::scenarios:
        break;
    }
    return QStringLiteral("All of it, from a file");
}

QString call(const Verb& verb) {
    return verb.arguments.isEmpty() ? verb.name : verb.name + u' ' + verb.arguments;
}

QString wholeHelp() {
    constexpr auto columnWidth = 34;
    QString text{opening};
    const Verb* previous = nullptr;
    for (const auto& verb : verbs()) {
        if (previous == nullptr || previous->role != verb.role) text += QStringLiteral("\n%1\n").arg(head(verb.role));
        text += QStringLiteral("  %1%2\n").arg(call(verb).leftJustified(columnWidth), verb.summary);
        previous = &verb;
    }
    return text + closing;
}

} // namespace

QString help(const QString& verb) {
    const auto* known = verb.isEmpty() ? nullptr : verbNamed(verb);
    if (known == nullptr) return wholeHelp();
    return QStringLiteral("usage: sysextctl %1\n\n%2%3.\n%4")
        .arg(call(*known), known->summary.left(1).toUpper(), known->summary.mid(1), known->details);
}

} // namespace simulator::ctl
