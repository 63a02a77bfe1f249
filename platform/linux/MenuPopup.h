#pragma once

#include "platform/ui/Scene.h"

#include <QMenu>

namespace platform {

class ImageStore;
class SceneControl;

/// An open menu of a control's items, with the handlers that they had when it was made. Its opener owns it, and the
/// main loop deletes it after it was closed.
class MenuPopup : public QMenu {
public:
    MenuPopup(SceneControl& opener, const std::vector<ui::MenuItem>& items, const ImageStore& images);

    SceneControl& opener() const { return opener_; }

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void add(const ui::MenuItem& item, const ImageStore& images);
    QIcon menuIcon(const ui::ImageReference& image, const ImageStore& images) const;

    SceneControl& opener_;
};

} // namespace platform
