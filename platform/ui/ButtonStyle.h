#pragma once

#include "platform/ui/View.h"

namespace platform::ui {

/// What a button hands to its style.
struct ButtonStyleConfiguration {
    View label;
};

/// How a button looks around its label.
class ButtonStyle {
public:
    ButtonStyle() = default;
    virtual ~ButtonStyle() = default;

    virtual View makeBody(const ButtonStyleConfiguration& configuration) const = 0;
    /// For descriptions.
    virtual const char* name() const = 0;

protected:
    ButtonStyle(const ButtonStyle&) = default;
    ButtonStyle& operator=(const ButtonStyle&) = default;
};

} // namespace platform::ui
