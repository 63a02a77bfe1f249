#include "platform/linux/MenuPopup.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/SceneAccessibility.h"
#include "platform/linux/SceneControl.h"

#include <cmath>

namespace platform {

namespace {

constexpr int iconSide = 16;

} // namespace

MenuPopup::MenuPopup(SceneControl& opener, const std::vector<ui::MenuItem>& items, const ImageStore& images)
    : QMenu{&opener}, opener_{opener} {
    setAttribute(Qt::WA_DeleteOnClose);
    setAccessibleName(opener.accessibleName());
    useLightAppearance(*this);
    for (const ui::MenuItem& item : items)
        add(item, images);
}

void MenuPopup::add(const ui::MenuItem& item, const ImageStore& images) {
    const auto title = QString::fromStdString(item.title);
    // An ampersand alone would be read as the mark of a key.
    QAction* const action = addAction(menuIcon(item.image, images), QString{title}.replace('&', "&&"));
    action->setData(title);
    action->setIconVisibleInMenu(true);
    connect(action, &QAction::triggered, this, [run = item.action.run] {
        // A copy: the handler may end the menu.
        const auto kept = run;
        if (kept) kept();
    });
}

void MenuPopup::showEvent(QShowEvent* event) {
    QMenu::showEvent(event);
    // To assistive technology the menu is a child of the control, there while it is open.
    tellAccessibility(*this, QAccessible::ObjectCreated);
}

void MenuPopup::hideEvent(QHideEvent* event) {
    tellAccessibility(*this, QAccessible::ObjectDestroyed);
    QMenu::hideEvent(event);
}

QIcon MenuPopup::menuIcon(const ui::ImageReference& image, const ImageStore& images) const {
    const double scale = opener_.devicePixelRatioF();
    const int side = static_cast<int>(std::lround(iconSide * scale));
    const auto pixmap = [&](const QColor& tint) {
        QPixmap result = QPixmap::fromImage(images.image(image, {side, side}, tint));
        result.setDevicePixelRatio(scale);
        return result;
    };
    QIcon icon;
    icon.addPixmap(pixmap(palette().color(QPalette::Text)), QIcon::Normal);
    icon.addPixmap(pixmap(palette().color(QPalette::HighlightedText)), QIcon::Active);
    return icon;
}

} // namespace platform
