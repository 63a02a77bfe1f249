#include "platform/linux/SceneControl.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/MenuPopup.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace platform {

SceneControl::SceneControl(QWidget& canvas, const ImageStore& images) : QAbstractButton{&canvas}, images_{images} {
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QAbstractButton::clicked, this, &SceneControl::activate);
}

void SceneControl::follow(const ui::Control& control, const ui::Rect& hitArea) {
    control_ = control;
    hitArea_ = toQRectF(hitArea);
    setGeometry(hitArea_.toAlignedRect());
    const QString name = QString::fromStdString(control.accessibleName);
    if (accessibleName() != name) setAccessibleName(name);
}

void SceneControl::dismiss() {
    if (popup_) popup_->close();
    hide();
}

MenuPopup* SceneControl::openMenu() const {
    return popup_ && popup_->isVisible() ? popup_.get() : nullptr;
}

bool SceneControl::hitButton(const QPoint& position) const {
    return hitArea_.contains(mapToParent(position));
}

void SceneControl::mousePressEvent(QMouseEvent* event) {
    if (isMenu() && event->button() == Qt::LeftButton && hitButton(event->position().toPoint())) return open();
    QAbstractButton::mousePressEvent(event);
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
    case Qt::Key_Down:
        if (isMenu()) return activate();
        [[fallthrough]];
    default:
        QWidget::keyPressEvent(event);
    }
}

void SceneControl::activate() {
    const auto run = [](const ui::PushButton& button) {
        // A copy: the handler may bring a scene that replaces it.
        const auto action = button.action.run;
        if (action) action();
    };
    const auto openByKeyboard = [this](const ui::PullDownMenu&) {
        open();
        if (!popup_->actions().isEmpty()) popup_->setActiveAction(popup_->actions().constFirst());
    };
    std::visit(ui::Cases{run, openByKeyboard}, control_.kind);
}

void SceneControl::open() {
    constexpr double gapBelowIndicator = 5;
    if (openMenu()) return;
    popup_ = new MenuPopup{*this, std::get<ui::PullDownMenu>(control_.kind).items, images_};
    const QPointF below = toQRectF(control_.rect).bottomLeft() + QPointF{0, gapBelowIndicator};
    popup_->popup(parentWidget()->mapToGlobal(below).toPoint());
}

} // namespace platform
