#pragma once

#include "platform/linux/MenuPopup.h"
#include "platform/linux/SceneControl.h"

namespace platform {

/// Opens a menu of the control's items on a press. The menu closes when the control's place is gone.
class SceneMenu : public SceneControl {
public:
    /// `images` outlives this.
    SceneMenu(QWidget& canvas, const ImageStore& images) : SceneControl{canvas}, images_{images} {}

    void dismiss() override;
    /// Opens the menu with its first item chosen, as keys and assistive technology do.
    void activate() override;
    /// The menu while it is open, else null.
    MenuPopup* openMenu() const { return popup_ && popup_->isVisible() ? popup_.get() : nullptr; }

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void open();

    const ImageStore& images_;
    DeletedLater<MenuPopup> popup_;
};

} // namespace platform
