#pragma once

#include <QPointer>
#include <QWidget>

#include <vector>

namespace simulator::settings {

/// Where keyboard focus was among controls that may since have changed their places, been hidden or gone.
class FocusPlace {
public:
    FocusPlace() = default;
    /// controls: in reading order, the hidden ones too.
    FocusPlace(QWidget* focused, const std::vector<QWidget*>& controls);

    /// Gives focus to what had it; if that is no longer there, to the control that came next, or else to the one
    /// before; or else to the fallback. What was not among the controls is not replaced by one of them.
    void restore(QWidget& fallback) const;

private:
    QWidget* nearest() const;

    QPointer<QWidget> focused_;
    /// From the one with focus onwards, and then back from it.
    std::vector<QPointer<QWidget>> candidates_;
};

} // namespace simulator::settings
