#include "simulator/SystemSettings/Appearance.h"
#include "simulator/SystemSettings/Opening.h"
#include "simulator/SystemSettings/SettingsWindow.h"
#include "simulator/bus/Types.h"
#include "simulator/client/OwnerRaces.h"
#include "simulator/process/TerminationSignals.h"

#include <QApplication>

int main(int argc, char** argv) {
    using namespace simulator::settings;
    simulator::keepOwnerRacesQuiet();
    simulator::TerminationSignals termination;
    QApplication application{argc, argv};
    termination.handle([] { QApplication::exit(); });
    QApplication::setApplicationName("System Settings");
    simulator::registerTypes();
    useAppearance(application);
    SettingsWindow window{QDBusConnection::sessionBus()};
    const Opening opening{window};
    return QApplication::exec();
}
