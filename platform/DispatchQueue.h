#pragma once

#include <functional>

namespace platform {

/// A queue of work. There is one, the main queue, whose work runs on the main thread, one piece at a time, from the
/// main loop of the application. A value; queues compare by identity.
class DispatchQueue {
public:
    /// The queue that every request of the application names.
    static DispatchQueue main() { return DispatchQueue{}; }

    /// Appends `work`; it runs later, in order, never inside this call. Any thread may call this. Work that is still
    /// queued when the application ends is dropped.
    void async(std::function<void()> work) const;

    friend bool operator==(const DispatchQueue&, const DispatchQueue&) = default;

private:
    DispatchQueue() = default;
};

} // namespace platform
