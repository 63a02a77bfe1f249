// The screen in QML, which Screen.qml describes.

#include "benchmarks/peers/Drivers.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQmlContext>

int main(int argc, char** argv) {
    QGuiApplication application{argc, argv};
    QGuiApplication::setWindowIcon(QIcon{QString{argv[1]} + "/Contents/Resources/AppIcon.svg"});
    Drivers drivers{QString{argv[1]} + "/Contents"};
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty("drivers", &drivers);
    engine.load(QUrl{"qrc:/peers/Screen.qml"});
    return QGuiApplication::exec();
}
