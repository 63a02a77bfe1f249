#include "ShownWindow.h"

#include "simulator/SystemSettings/Appearance.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLabel>

namespace simulator::tests {

namespace {

QString accessibleName(QWidget& widget) {
    return QAccessible::queryAccessibleInterface(&widget)->text(QAccessible::Name);
}

} // namespace

OffscreenApplication::OffscreenApplication() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_RUNTIME_DIR", runtime_.path().toUtf8());
    application_.emplace(argc_, argv_);
    ::tests::failOnQtWarnings([](const QString& message) {
        return isNoteOfOwnerRace(message) || message == u"This plugin does not support raise()";
    });
    settings::useAppearance(*application_);
}

ShownWindow::ShownWindow(const QDBusConnection& bus) : window_{bus} {
    window_.show();
    window_.activateWindow();
}

QWidget* ShownWindow::named(const QString& name) {
    for (auto* button : window_.findChildren<QAbstractButton*>())
        if (button->isVisible() && accessibleName(*button) == name) return button;
    return nullptr;
}

QStringList ShownWindow::texts() {
    QStringList all;
    for (auto* label : window_.findChildren<QLabel*>())
        if (label->isVisible()) all += accessibleName(*label);
    return all;
}

QString ShownWindow::focused() {
    auto* const widget = QApplication::focusWidget();
    return widget == nullptr ? QString{} : accessibleName(*widget);
}

void ShownWindow::press(const QString& name, const QString& action) {
    QAccessible::queryAccessibleInterface(named(name))->actionInterface()->doAction(action);
}

} // namespace simulator::tests
