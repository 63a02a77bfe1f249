#include "simulator/sysextctl/Arguments.h"

#include "simulator/sysextctl/CommandFailure.h"
#include "simulator/sysextctl/Duration.h"
#include "simulator/sysextctl/OneLine.h"
#include "simulator/sysextctl/Verbs.h"

#include <algorithm>
#include <utility>

namespace simulator::ctl {

namespace {

[[noreturn]] void notUnderstood(const QString& line) {
    throw CommandFailure{exitCode::notUnderstood, oneLine(line)};
}

QString withHelp(const QString& line, const Verb& verb) {
    return QStringLiteral("%1; \"sysextctl %2 --help\" says more").arg(line, verb.name);
}

bool isOption(const QString& word) {
    return word.startsWith("--");
}

} // namespace

Arguments::Arguments(const Verb& verb, QStringList words) : verb_{verb}, words_{std::move(words)} {
}

bool Arguments::takeFlag(const QString& name) {
    return words_.removeAll(name) > 0;
}

std::optional<QString> Arguments::takeValue(const QString& name) {
    const auto assigned = name + u'=';
    for (qsizetype index = 0; index < words_.size(); ++index) {
        if (words_.at(index).startsWith(assigned)) return words_.takeAt(index).mid(assigned.size());
    }
    const auto index = words_.indexOf(name);
    if (index < 0) return std::nullopt;
    if (index + 1 == words_.size()) rejectUse();
    words_.removeAt(index);
    return words_.takeAt(index);
}

std::optional<qint64> Arguments::takeDuration(const QString& name) {
    const auto word = takeValue(name);
    if (!word) return std::nullopt;
    return durationOf(*word);
}

void Arguments::expect(qsizetype least, qsizetype most) const {
    const auto option = std::find_if(words_.begin(), words_.end(), isOption);
    if (option != words_.end())
        notUnderstood(withHelp(QStringLiteral("%1 knows no option \"%2\"").arg(verb_.name, *option), verb_));
    if (words_.size() < least || words_.size() > most) rejectUse();
}

qint64 Arguments::durationAt(qsizetype index) const {
    return durationOf(words_.at(index));
}

const QString& Arguments::oneOf(qsizetype index, const QString& what, const QStringList& known) const {
    const auto& word = words_.at(index);
    if (!known.contains(word)) reject(what, word, known);
    return word;
}

void Arguments::reject(const QString& what, const QString& word, const QStringList& known) const {
    notUnderstood(QStringLiteral("unknown %1 \"%2\"; there is %3").arg(what, word, known.join(", ")));
}

void Arguments::rejectUse() const {
    notUnderstood(withHelp(QStringLiteral("usage: sysextctl %1 %2").arg(verb_.name, verb_.arguments).trimmed(), verb_));
}

qint64 Arguments::durationOf(const QString& word) const {
    const auto length = milliseconds(word);
    if (!length) notUnderstood(QStringLiteral("\"%1\" is not a time; examples are 90s, 5m and 250ms").arg(word));
    return *length;
}

} // namespace simulator::ctl
