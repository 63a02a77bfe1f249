#pragma once

#include "platform/ObservableObject.h"

#include <utility>

namespace platform {

/// A field of an observable object. Subscribers are notified before every assignment, even of an equal value.
template <typename T>
class Published {
public:
    /// `owner` must outlive the field.
    Published(ObservableObject& owner, T initial) : owner_{owner}, value_{std::move(initial)} {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    const T& get() const { return value_; }

    /// Subscribers still see the old value.
    Published& operator=(T value) {
        owner_.objectWillChange().send();
        value_ = std::move(value);
        return *this;
    }

    /// Changes the value in place: one assignment.
    template <typename Change>
    void modify(Change&& change) {
        owner_.objectWillChange().send();
        std::forward<Change>(change)(value_);
    }

private:
    ObservableObject& owner_;
    T value_;
};

} // namespace platform
