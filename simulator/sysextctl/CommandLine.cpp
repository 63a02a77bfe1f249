#include "simulator/sysextctl/CommandLine.h"

#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/Verbs.h"

namespace simulator::ctl {

namespace {

bool asksForHelp(const QString& word) {
    return word == u"--help" || word == u"-h";
}

const Verb& knownVerb(const QString& name) {
    if (const auto* verb = verbNamed(name)) return *verb;
    throw CommandFailure{
        exitCode::notUnderstood,
        oneLine(QStringLiteral("unknown verb \"%1\"; \"sysextctl --help\" lists the verbs").arg(name))};
}

Command helpFor(const QStringList& words) {
    return ShowHelp{words.isEmpty() ? QString{} : knownVerb(words.first()).name};
}

} // namespace

Command readCommandLine(const QStringList& words) {
    if (words.isEmpty())
        throw CommandFailure{exitCode::notUnderstood, "a verb is missing; \"sysextctl --help\" lists the verbs"};
    const auto& first = words.first();
    const auto rest = words.mid(1);
    if (asksForHelp(first) || first == u"help") return helpFor(rest);
    const auto& verb = knownVerb(first);
    if (rest.contains("--help") || (!rest.isEmpty() && asksForHelp(rest.first()))) return ShowHelp{verb.name};
    return verb.read(verb, rest);
}

} // namespace simulator::ctl
