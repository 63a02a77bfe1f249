#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace simulator::ctl {

struct Verb;

/// What follows a verb. Everything that cannot be understood ends in a CommandFailure whose line says what would be.
class Arguments {
public:
    Arguments(const Verb& verb, QStringList words);

    /// Takes the option out of the arguments; says whether it was there.
    bool takeFlag(const QString& name);
    /// Takes the option and the word after it, or after its "=", out of the arguments; nothing if it was not there.
    std::optional<QString> takeValue(const QString& name);
    /// The same for a length of time, in milliseconds.
    std::optional<qint64> takeDuration(const QString& name);

    /// To be called when the options are taken: what is left must be that many words and no option.
    void expect(qsizetype least, qsizetype most) const;

    qsizetype count() const { return words_.size(); }
    const QString& at(qsizetype index) const { return words_.at(index); }
    qint64 durationAt(qsizetype index) const;
    /// The word at that place, which must be one of those.
    const QString& oneOf(qsizetype index, const QString& what, const QStringList& known) const;

    [[noreturn]] void reject(const QString& what, const QString& word, const QStringList& known) const;
    [[noreturn]] void rejectUse() const;

private:
    qint64 durationOf(const QString& word) const;

    const Verb& verb_;
    QStringList words_;
};

} // namespace simulator::ctl
