#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

// Observation. Use it only on the thread that owns the observed object.

namespace platform {

/// Ends its subscription when it is destroyed. May outlive the observed object.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    /// `end` is called once, unless this was moved from.
    explicit Subscription(std::function<void()> end) : end_{std::move(end)} {}
    Subscription(Subscription&& other) noexcept : end_{std::exchange(other.end_, nullptr)} {}
    Subscription& operator=(Subscription&& other) noexcept {
        std::swap(end_, other.end_);
        return *this;
    }
    ~Subscription() {
        if (end_) end_();
    }

private:
    std::function<void()> end_;
};

/// Notifies subscribers in the order in which they subscribed. Inside a notification, a subscriber may add subscribers,
/// which are called from the next notification on, and may end any subscription, which takes effect at once.
/// Subscribers must not throw.
class ObjectWillChangePublisher {
public:
    ObjectWillChangePublisher() = default;
    ObjectWillChangePublisher(const ObjectWillChangePublisher&) = delete;
    ObjectWillChangePublisher& operator=(const ObjectWillChangePublisher&) = delete;

    /// Keeps and calls the subscriber as long as the result lives.
    Subscription subscribe(std::function<void()> subscriber) {
        auto slot = std::make_shared<Slot>(Slot{std::move(subscriber), true});
        slots_->push_back(slot);
        return Subscription{[list = std::weak_ptr{slots_}, slot = std::move(slot)] {
            slot->subscribed = false;
            if (const auto subscribers = list.lock()) std::erase(*subscribers, slot);
        }};
    }

    /// Calls those that subscribed before this call.
    void send() const {
        const auto present = *slots_;
        for (const auto& slot : present) {
            if (slot->subscribed) slot->subscriber();
        }
    }

private:
    struct Slot {
        std::function<void()> subscriber;
        bool subscribed;
    };

    std::shared_ptr<std::vector<std::shared_ptr<Slot>>> slots_ = std::make_shared<std::vector<std::shared_ptr<Slot>>>();
};

/// An object whose published fields announce each change before it happens.
class ObservableObject {
public:
    ObservableObject() = default;
    ObservableObject(const ObservableObject&) = delete;
    ObservableObject& operator=(const ObservableObject&) = delete;

    /// Sent before each change of a published field.
    ObjectWillChangePublisher& objectWillChange() { return objectWillChange_; }

protected:
    ~ObservableObject() = default;

private:
    ObjectWillChangePublisher objectWillChange_;
};

} // namespace platform
