#pragma once

#include "platform/linux/SceneControl.h"

namespace platform {

/// Runs the control's action: once for each press, counted when it is released inside.
class SceneButton : public SceneControl {
public:
    explicit SceneButton(QWidget& canvas) : SceneControl{canvas} {}

    void activate() override;
};

} // namespace platform
