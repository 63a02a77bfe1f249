#include "simulator/SystemSettings/SettingsWindow.h"

#include <QApplication>
#include <QDBusMessage>
#include <QEvent>
#include <QScreen>

#include <cstdio>

namespace {

using simulator::settings::windowName;

/// Prints a line when the window is on the screen: whoever started the program can then open an application's beside it
/// without a race for the place.
class Announcer : public QObject {
protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            std::puts("System Settings is open.");
            std::fflush(stdout);
        }
        return QObject::eventFilter(watched, event);
    }
};

/// Asks the one that runs to come to the front; false if there is none.
bool showsTheOther(const QDBusConnection& bus) {
    const auto call = QDBusMessage::createMethodCall(windowName, simulator::objectPath, windowName, "Show");
    return bus.call(call).type() == QDBusMessage::ReplyMessage;
}

} // namespace

int main(int argc, char** argv) {
    simulator::keepOwnerRacesQuiet();
    QApplication application{argc, argv};
    if (QApplication::arguments().contains("--probe")) return 0; // there is a display, or else this is not reached
    QApplication::setApplicationName("System Settings");
    simulator::registerTypes();
    simulator::settings::useAppearance(application);
    auto bus = QDBusConnection::sessionBus();
    simulator::settings::SettingsWindow window{bus};
    bus.registerObject(simulator::objectPath, &window, QDBusConnection::ExportScriptableSlots);
    if (!bus.registerService(windowName) && showsTheOther(bus)) return 0;
    QApplication::setQuitOnLastWindowClosed(!QApplication::arguments().contains("--stay"));
    Announcer announcer;
    window.installEventFilter(&announcer);
    window.move(simulator::settings::placeFor(window.size(), window.screen()->availableGeometry()));
    window.show();
    return QApplication::exec();
}
