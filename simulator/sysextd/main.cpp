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

constexpr auto help = R"(usage: sysextd [--help | --version]

Runs the simulated macOS extension service on the session bus until the bus ends. There is usually no need to
start it: the bus starts it when a program calls com.kelvra.Simulator1. "sysextctl --help" says how to control it.
It keeps its state in $XDG_STATE_HOME/kelvra-simulator/store.sqlite; XDG_STATE_HOME is ~/.local/state by default.

  --help     prints this help
  --version  prints the version

Exit status, with one line on standard error unless it is 0:
  0  the bus ended, or the help or the version was printed
  1  there is no bus, the store cannot be used, another service runs, or a fault ended it
  2  an unknown argument
)";

/// Instead of serving.
int answer(const QString& argument) {
    const bool asksForHelp = argument == "--help" || argument == "-h";
    if (asksForHelp || argument == "--version") {
        std::fputs(asksForHelp ? help : "sysextd " SIMULATOR_VERSION "\n", stdout);
        return 0;
    }
    complain("unknown argument \"" + argument + "\"; see \"sysextd --help\"");
    return 2;
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
    if (!bus.registerObject(objectPath, &object) || !bus.registerService(serviceName))
        return complain("another program owns the bus name " + QString{serviceName});
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    if (argc > 1) return answer(QString::fromLocal8Bit(argv[1]));
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
