#include "platform/linux/SceneControl.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/SceneAccessibility.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainterPath>

#include <cmath>

namespace platform {

namespace {

constexpr int iconSide = 16;

constexpr auto look = "QMenu { background: white; border: 1px solid #c8c8c8 }"
                      "QMenu { border-radius: 8px; padding: 4px }"
                      "QMenu::item { border-radius: 5px; padding: 4px 12px 4px 8px }"
                      "QMenu::item:selected { background: #0067f4; color: white }"
                      "QMenu::icon { padding-left: 6px }";

QIcon menuIcon(const QMenu& menu, const ui::ImageReference& image, const ImageStore& images) {
    const double scale = menu.parentWidget()->devicePixelRatioF();
    const int side = static_cast<int>(std::lround(iconSide * scale));
    const auto pixmap = [&](const QPalette::ColorRole tint) {
        return images.image(image, {side, side}, menu.palette().color(tint), scale);
    };
    QIcon icon;
    icon.addPixmap(pixmap(QPalette::Text), QIcon::Normal);
    icon.addPixmap(pixmap(QPalette::HighlightedText), QIcon::Active);
    return icon;
}

void add(QMenu& menu, const ui::MenuItem& item, const ImageStore& images) {
    const auto title = QString::fromStdString(item.title);
    // Qt takes a single ampersand for the mark of a shortcut.
    QAction* const action = menu.addAction(menuIcon(menu, item.image, images), QString{title}.replace('&', "&&"));
    action->setData(title);
    action->setIconVisibleInMenu(true);
    QObject::connect(action, &QAction::triggered, &menu, [run = item.action.run] {
        // A copy, because the handler may delete the menu.
        const auto kept = run;
        if (kept) kept();
    });
}

/// Rounds the corners. X11 may have no compositor, so there a mask cuts them, slightly outside the border.
void makeRound(QMenu& menu) {
    menu.setStyleSheet(QString::fromLatin1(look));
    if (QGuiApplication::platformName() != QLatin1String{"xcb"}) return menu.setAttribute(Qt::WA_TranslucentBackground);
    QPainterPath outline;
    outline.addRoundedRect(QRectF{QPointF{}, menu.sizeHint()}, 7, 7);
    menu.setMask(outline.toFillPolygon().toPolygon());
}

/// A menu with these items. It is deleted when it closes.
QMenu* makeMenu(QWidget& opener, const std::vector<ui::MenuItem>& items, const ImageStore& images) {
    auto* const menu = new QMenu{&opener};
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->setAccessibleName(opener.accessibleName());
    useLightAppearance(*menu);
    for (const ui::MenuItem& item : items)
        add(*menu, item, images);
    makeRound(*menu);
    // For assistive technology, an open menu is a child of its opener.
    const auto tell = [menu](const auto what) { return [=] { tellAccessibility(*menu, what); }; };
    QObject::connect(menu, &QMenu::aboutToShow, tell(QAccessible::ObjectCreated));
    QObject::connect(menu, &QMenu::aboutToHide, tell(QAccessible::ObjectDestroyed));
    return menu;
}

} // namespace

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

QMenu* SceneControl::openMenu() const {
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
    case Qt::Key_Up:
        if (isMenu()) return openAt(event->key() == Qt::Key_Down ? Qt::TopEdge : Qt::BottomEdge);
        [[fallthrough]];
    default:
        QWidget::keyPressEvent(event); // NOLINT(bugprone-parent-virtual-call): a button's own would move focus
    }
}

void SceneControl::activate() {
    if (isMenu()) return openAt(Qt::TopEdge);
    // A copy, because the handler may cause a scene that replaces it.
    if (const auto action = std::get<ui::PushButton>(control_.kind).action.run) action();
}

void SceneControl::openAt(const Qt::Edge end) {
    open();
    const auto items = popup_->actions();
    popup_->setActiveAction(items.value(end == Qt::TopEdge ? 0 : items.size() - 1));
}

void SceneControl::open() {
    constexpr double gapBelow = 5;
    if (openMenu()) return;
    popup_ = makeMenu(*this, std::get<ui::PullDownMenu>(control_.kind).items, images_);
    const QPointF below = toQRectF(control_.rect).bottomLeft() + QPointF{0, gapBelow};
    popup_->popup(parentWidget()->mapToGlobal(below).toPoint());
}

} // namespace platform
