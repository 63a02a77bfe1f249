#include "simulator/sysextctl/SwitchList.h"

#include "simulator/sysextctl/OneLine.h"

#include <algorithm>
#include <iterator>

namespace simulator::ctl {

QList<SwitchEntry> switchesNamed(const QList<SwitchEntry>& switches, const QString& name) {
    if (name.isEmpty()) return switches;
    QList<SwitchEntry> chosen;
    std::copy_if(switches.begin(), switches.end(), std::back_inserter(chosen),
                 [&name](const SwitchEntry& entry) { return entry.name == name; });
    return chosen;
}

QStringList namesOf(const QList<SwitchEntry>& switches) {
    QStringList names;
    for (const auto& entry : switches)
        names += entry.name;
    return names;
}

QString switchesAsText(const QList<SwitchEntry>& switches) {
    QString text;
    for (const auto& entry : switches)
        text += QStringLiteral("%1\t%2\t(%3)\t%4\n")
                    .arg(oneLine(entry.name), oneLine(entry.value), oneLine(entry.values.join(" | ")),
                         oneLine(entry.meaning));
    return text;
}

} // namespace simulator::ctl
