#include "simulator/play/MacSettings.h"

#include "simulator/play/Answered.h"

namespace simulator::play {

MacSettings::MacSettings(ComKelvraSimulator1ControlInterface& control, const QString& applicationsFolder)
    : control_{control},
      applicationsFolders_{answered(control.GetApplicationsFolders()).value()},
      developerMode_{answered(control.GetDeveloperMode()).value()},
      profile_{answered(control.GetProfile()).value()},
      switches_{answered(control.ListSwitches()).value()} {
    answered(control_.Reset());
    answered(control_.SetDeveloperMode(false));
    answered(control_.SetProfile({}));
    for (const SwitchEntry& entry : switches_)
        answered(control_.SetSwitch(entry.name, entry.values.value(0)));
    answered(control_.SetApplicationsFolders({applicationsFolder}));
}

MacSettings::~MacSettings() {
    control_.Reset();
    control_.SetApplicationsFolders(applicationsFolders_);
    control_.SetDeveloperMode(developerMode_);
    control_.SetProfile(profile_);
    for (const SwitchEntry& entry : switches_)
        control_.SetSwitch(entry.name, entry.value);
    control_.ListSwitches().waitForFinished(); // all of them have arrived
}

} // namespace simulator::play
