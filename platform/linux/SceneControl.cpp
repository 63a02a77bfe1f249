#include "platform/linux/SceneControl.h"

#include "platform/linux/Conversions.h"
#include "platform/linux/SceneButton.h"
#include "platform/linux/SceneMenu.h"

#include <QKeyEvent>

namespace platform {

DeletedLater<SceneControl> SceneControl::make(const ui::Control& control, QWidget& canvas, const ImageStore& images) {
    using Made = DeletedLater<SceneControl>;
    const auto button = [&](const ui::PushButton&) { return Made{std::make_unique<SceneButton>(canvas).release()}; };
    const auto menu = [&](const ui::PullDownMenu&) {
        return Made{std::make_unique<SceneMenu>(canvas, images).release()};
    };
    return std::visit(ui::Cases{button, menu}, control.kind);
}

SceneControl::SceneControl(QWidget& canvas) : QAbstractButton{&canvas} {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, [this] { activate(); });
}

void SceneControl::follow(const ui::Control& control, const QRectF& hitArea) {
    control_ = control;
    hitArea_ = hitArea;
    setGeometry(hitArea.toAlignedRect());
    const QString name = toQString(control.accessibleName);
    if (accessibleName() != name) setAccessibleName(name);
}

void SceneControl::dismiss() {
    hide();
}

bool SceneControl::hitButton(const QPoint& position) const {
    return hitArea_.contains(mapToParent(position));
}

void SceneControl::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat()) setDown(true);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!event->isAutoRepeat()) click();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace platform
