#pragma once

#import <Foundation/Foundation.h>

#include <utility>

// For sources in Objective-C++ alone.

#if __has_feature(objc_arc)
#error "Retained counts references itself: compile without automatic reference counting"
#endif

namespace platform {

/// Owns one reference to an object of Objective-C. Made from a pointer it adopts the caller's reference, as alloc and
/// copy give one; retain() takes one of its own. nil is owned like any other.
template <typename T>
class Retained {
public:
    Retained() = default;
    explicit Retained(T* const adopted) : object_{adopted} {}
    Retained(const Retained& other) : object_{[other.object_ retain]} {}
    Retained(Retained&& other) noexcept : object_{std::exchange(other.object_, nil)} {}
    Retained& operator=(Retained other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Retained() { [object_ release]; }

    T* get() const { return object_; }
    explicit operator bool() const { return object_ != nil; }

private:
    T* object_ = nil;
};

/// Owns a new reference to a borrowed object.
template <typename T>
Retained<T> retain(T* const borrowed) {
    return Retained<T>{[borrowed retain]};
}

} // namespace platform
