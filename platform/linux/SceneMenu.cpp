#include "platform/linux/SceneMenu.h"

#include "platform/linux/Conversions.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace platform {

namespace {
constexpr double gapBelowIndicator = 5;
}

void SceneMenu::dismiss() {
    if (popup_) popup_->close();
    SceneControl::dismiss();
}

void SceneMenu::activate() {
    open();
    if (popup_ && !popup_->actions().isEmpty()) popup_->setActiveAction(popup_->actions().constFirst());
}

void SceneMenu::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && hitButton(event->position().toPoint()))
        open();
    else
        event->ignore();
}

void SceneMenu::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down) return activate();
    SceneControl::keyPressEvent(event);
}

void SceneMenu::open() {
    if (openMenu()) return;
    popup_.reset(
        std::make_unique<MenuPopup>(*this, std::get<ui::PullDownMenu>(control().kind).items, images_).release());
    const QPointF below = toQRectF(control().rect).bottomLeft() + QPointF{0, gapBelowIndicator};
    popup_->popup(parentWidget()->mapToGlobal(below).toPoint());
}

} // namespace platform
