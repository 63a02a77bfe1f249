#pragma once

#include "platform/macos/SceneControl.h"

namespace platform {

/// Opens a menu of the control's items on a press. An open menu keeps the handlers that it was opened with; it closes
/// when the control's place is gone.
class SceneMenu final : public SceneControl {
public:
    explicit SceneMenu(const ImageStore& images);
    ~SceneMenu() override;

    Native view() const override;
    void dismiss() override;
    /// Makes the items of the menu those of the control, unless it is open.
    void fill() const;

protected:
    void followed() override { fill(); }

private:
    struct View;

    std::unique_ptr<View> view_;
};

} // namespace platform
