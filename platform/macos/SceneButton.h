#pragma once

#include "platform/macos/SceneControl.h"

namespace platform {

/// Runs the control's action: once for each press, counted when it is released inside.
class SceneButton final : public SceneControl {
public:
    explicit SceneButton(const ImageStore& images);
    ~SceneButton() override;

    Native view() const override;
    void dismiss() override;
    void press() const;

private:
    struct View;

    std::unique_ptr<View> view_;
};

} // namespace platform
