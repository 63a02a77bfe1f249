#pragma once

#include <functional>

namespace platform {

/// A queue of work. The only one is the main queue: the main loop runs its work on the main thread, one item at a time.
class DispatchQueue {
public:
    /// The queue of every request of the application.
    static DispatchQueue main() { return DispatchQueue{}; }

    /// Appends `work`, which runs later, in order, never inside this call. Any thread may call this. Work still queued
    /// when the application ends is dropped.
    void async(std::function<void()> work) const;

    friend bool operator==(const DispatchQueue&, const DispatchQueue&) = default;

private:
    DispatchQueue() = default;
};

} // namespace platform
