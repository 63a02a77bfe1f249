#pragma once

#include "simulator/sysextctl/Command.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace simulator::ctl {

/// One verb: what is typed, what it means, and how its arguments are read.
struct Verb {
    enum class Role : std::uint8_t { shows, person, machine, faults, scenarios };

    Role role;
    QString name;
    QString arguments;
    QString summary; ///< one line
    QString details; ///< more lines, each ended
    /// Reads what follows the name. Throws CommandFailure.
    Command (*read)(const Verb& verb, const QStringList& arguments);
};

/// Every verb that there is, in the order of the help.
const std::vector<Verb>& verbs();

/// Null if there is none of that name.
const Verb* verbNamed(const QString& name);

} // namespace simulator::ctl
