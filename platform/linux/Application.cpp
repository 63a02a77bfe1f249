#include "platform/Application.h"

#include "platform/Bundle.h"
#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/SceneAccessibility.h"
#include "platform/linux/ScenePainter.h"
#include "platform/posix/StandardStreams.h"
#include "platform/ui/SceneHost.h"

#include <QApplication>

#include <algorithm>

namespace platform {

namespace {

/// The main loop runs it after the current event, and after work posted earlier.
void atEndOfTurn(std::function<void()> work) {
    QMetaObject::invokeMethod(qApp, std::move(work), Qt::QueuedConnection);
}

void quitAfterLastWindow(QApplication& application, NSApplicationDelegate& delegate) {
    application.setQuitOnLastWindowClosed(false);
    QObject::connect(&application, &QGuiApplication::lastWindowClosed, [&delegate] {
        if (delegate.applicationShouldTerminateAfterLastWindowClosed()) QCoreApplication::exit(0);
    });
}

int showAndRun(const char* title, const ui::WindowGroup& scene) {
    makeScenesAccessible();
    const ImageStore images{QString::fromStdString(NSBundle::mainBundle().resourcePath())};
    const QtMetrics metrics{images};
    MainWindow window{QString::fromUtf8(title), images};
    const ui::SceneHost host{scene, metrics, {}, atEndOfTurn, [&](const ui::Scene& next) { window.present(next); }};
    window.present(host.scene());
    window.show();
    return QApplication::exec();
}

} // namespace

int runApplication(int argc, char** argv, const char* title, NSApplicationDelegate& delegate,
                   const ui::WindowGroup& scene) {
    prepareStandardStreams();
    chooseStyle();
    // Neither the application nor Qt takes command-line arguments.
    int nameOnly = std::min(argc, 1);
    QApplication application{nameOnly, argv};
    quitAfterLastWindow(application, delegate);
    return showAndRun(title, scene);
}

} // namespace platform
