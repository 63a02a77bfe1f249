#include "simulator/SystemSettings/FocusPlace.h"

#include <algorithm>
#include <iterator>

namespace simulator::settings {

namespace {

bool canHaveFocus(const QPointer<QWidget>& widget) {
    return widget && widget->isVisibleTo(widget->window()) && widget->isEnabled();
}

} // namespace

FocusPlace::FocusPlace(QWidget* focused, const std::vector<QWidget*>& controls) : focused_{focused} {
    const auto place = std::find(controls.begin(), controls.end(), focused);
    if (place == controls.end()) return;
    candidates_.assign(place, controls.end());
    std::copy(std::make_reverse_iterator(place), controls.rend(), std::back_inserter(candidates_));
}

void FocusPlace::restore(QWidget& fallback) const {
    auto* const widget = nearest();
    (widget == nullptr ? fallback : *widget).setFocus(Qt::OtherFocusReason);
}

QWidget* FocusPlace::nearest() const {
    if (canHaveFocus(focused_)) return focused_;
    const auto found = std::find_if(candidates_.begin(), candidates_.end(), canHaveFocus);
    return found == candidates_.end() ? nullptr : found->data();
}

} // namespace simulator::settings
