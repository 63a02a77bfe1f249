#pragma once

#include "Simulator1Proxy.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace simulator::play {

/// The settings of a simulated Mac while a scenario is played on it: at their defaults, with nothing installed. When
/// this goes, they are as they were, and what the scenario left behind is removed.
class MacSettings {
public:
    /// The control must outlive it. Throws scenario::NotDone.
    MacSettings(ComKelvraSimulator1ControlInterface& control, const QString& applicationsFolder);
    ~MacSettings();
    MacSettings(const MacSettings&) = delete;
    MacSettings& operator=(const MacSettings&) = delete;

private:
    ComKelvraSimulator1ControlInterface& control_;
    QStringList applicationsFolders_;
    bool developerMode_;
    QByteArray profile_;
    QList<SwitchEntry> switches_;
};

} // namespace simulator::play
