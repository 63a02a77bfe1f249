#include "platform/SystemExtensions.h"

#include "platform/linux/SimulatorManager.h"

#include <QCoreApplication>
#include <QString>

#include <unistd.h>

namespace platform {

namespace {

QString sessionBusAddress() {
    auto address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    if (!address.isEmpty()) return address;
    const auto runtimeFolder = qEnvironmentVariable("XDG_RUNTIME_DIR", QStringLiteral("/run/user/%1").arg(getuid()));
    return QStringLiteral("unix:path=%1/bus").arg(runtimeFolder);
}

SimulatorManager& simulatorManager() {
    static SimulatorManager manager{sessionBusAddress()};
    return manager;
}

void closeManager() {
    simulatorManager().close();
}

SimulatorManager& managerThatClosesWithTheApplication() {
    qAddPostRoutine(closeManager);
    return simulatorManager();
}

} // namespace

OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    static SimulatorManager& manager = managerThatClosesWithTheApplication();
    return manager;
}

} // namespace platform
