#include "Simulator1Adaptor.h"
#include "simulator/sysextd/BusObject.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDir>

#include <cstdio>
#include <exception>

namespace {

using namespace simulator;

int complain(const QString& problem) {
    std::fprintf(stderr, "sysextd: %s\n", qPrintable(problem));
    return 1;
}

std::string storeFile() {
    QString folder = qEnvironmentVariable("XDG_STATE_HOME");
    if (!QDir::isAbsolutePath(folder)) folder = QDir::homePath() + "/.local/state";
    return (folder + "/kelvra-simulator/store.sqlite").toStdString();
}

/// Serves until the bus is gone. A kill loses nothing that was answered.
int serve(QCoreApplication& application, QDBusConnection bus) {
    Service service{storeFile()};
    BusObject object{bus, service};
    Simulator1Adaptor applications{&object};
    ControlAdaptor control{&object};
    bus.connect({}, "/org/freedesktop/DBus/Local", "org.freedesktop.DBus.Local", "Disconnected", &application,
                SLOT(quit()));
    if (!bus.registerObject(objectPath, &object) || !bus.registerService(serviceName)) {
        return complain("another program owns the bus name " + QString{serviceName});
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    try {
        QCoreApplication application{argc, argv};
        registerTypes();
        const QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) return complain("there is no session bus: " + bus.lastError().message());
        return serve(application, bus);
    } catch (const std::exception& problem) {
        return complain(problem.what());
    }
}
