// The application, with a hand that presses its controls. When the simulated Mac restarts, it starts again in the same
// process, so that what one life leaves behind adds up.

#include "app/DriverManagerApp.h"
#include "platform/linux/SimulatorManager.h"
#include "tests/support/QtTesting.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QSocketNotifier>
#include <QTest>

#include <atomic>
#include <iostream>
#include <malloc.h>
#include <string>
#include <unistd.h>

#include <private/qhooks_p.h>

namespace {

using tests::until;

/// How many objects of Qt there are in this process.
std::atomic<int>& objects() {
    static std::atomic<int> number;
    return number;
}

void countObjects() {
    qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(+[](QObject*) { ++objects(); });
    qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(+[](QObject*) { --objects(); });
}

void click(QWidget& window, const QPoint at) {
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, at);
}

/// Null if there is none.
QAbstractButton* shownControl(const QString& name) {
    for (auto* const widget : QApplication::allWidgets()) {
        auto* const control = qobject_cast<QAbstractButton*>(widget);
        if (control && control->isVisible() && control->accessibleName() == name) return control;
    }
    return nullptr;
}

void press(const QString& name) {
    if (!until([&] { return shownControl(name) != nullptr; })) return;
    const auto* const control = shownControl(name);
    click(*control->window(), control->mapTo(control->window(), control->rect().center()));
}

/// In the open menu.
void choose(const QString& item) {
    auto& menu = dynamic_cast<QMenu&>(*QApplication::activePopupWidget());
    for (auto* const action : menu.actions())
        if (action->data() == item) return click(menu, menu.actionGeometry(action).center());
}

/// The name of an object and of those in it, as assistive technology reads them.
QString namesIn(const QAccessibleInterface& object) {
    QString names = object.text(QAccessible::Name) + u'|';
    for (int index = 0; index < object.childCount(); ++index)
        names += namesIn(*object.child(index));
    return names;
}

bool shows(const QString& names) {
    auto* const window = QApplication::topLevelWidgets().value(0);
    return window && namesIn(*QAccessible::queryAccessibleInterface(window)).contains(names);
}

void say(const std::string& line) {
    std::cout << line << std::endl;
}

/// An order is a verb and its object.
void obey(const std::string& order) {
    const auto object = QString::fromStdString(order.substr(order.find(' ') + 1));
    if (order.rfind("press ", 0) == 0) press(object);
    if (order.rfind("choose ", 0) == 0) choose(object);
    if (order.rfind("see ", 0) == 0 && until([&] { return shows(object); })) say("seen");
    if (order == "count") say("counted " + std::to_string(objects()) + ' ' + std::to_string(mallinfo2().uordblks));
}

void listen() {
    auto* const orders = new QSocketNotifier{STDIN_FILENO, QSocketNotifier::Read, qApp};
    QObject::connect(orders, &QSocketNotifier::activated, qApp, [orders] {
        std::string order;
        if (!std::getline(std::cin, order)) return QCoreApplication::quit();
        orders->setEnabled(false); // until this one is carried out
        obey(order);
        orders->setEnabled(true);
    });
    qAddPostRoutine(
        [] { dynamic_cast<platform::SimulatorManager&>(platform::OSSystemExtensionManager::sharedManager()).close(); });
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(listen)

int main(int argc, char** argv) {
    countObjects();
    std::setvbuf(stdin, nullptr, _IONBF, 0); // so that each order makes the notifier speak
    int status = platform::exitStatusOfRestart;
    while (status == platform::exitStatusOfRestart)
        status = app::DriverManagerApp{}.main(argc, argv);
    return status;
}
