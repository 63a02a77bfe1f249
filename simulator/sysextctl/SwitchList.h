#pragma once

#include "simulator/bus/SwitchEntry.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace simulator::ctl {

/// The switches of that name, or all of them if it is empty.
QList<SwitchEntry> switchesNamed(const QList<SwitchEntry>& switches, const QString& name);

QStringList namesOf(const QList<SwitchEntry>& switches);

/// For each switch its name and value, what it decides, and the values that it takes with the default first.
QString switchesAsText(const QList<SwitchEntry>& switches);

} // namespace simulator::ctl
