#include "tests/support/FakeDispatchQueue.h"

#include "platform/DispatchQueue.h"

#include <deque>
#include <mutex>
#include <utility>

namespace platform {

namespace {

class WaitingWork {
public:
    void append(std::function<void()> work) {
        const std::lock_guard lock{mutex_};
        work_.push_back(std::move(work));
    }

    std::function<void()> takeFirst() {
        const std::lock_guard lock{mutex_};
        if (work_.empty()) return nullptr;
        auto first = std::move(work_.front());
        work_.pop_front();
        return first;
    }

    std::size_t length() {
        const std::lock_guard lock{mutex_};
        return work_.size();
    }

private:
    std::mutex mutex_;
    std::deque<std::function<void()>> work_;
};

WaitingWork& mainQueue() {
    static WaitingWork work;
    return work;
}

} // namespace

void DispatchQueue::async(std::function<void()> work) const {
    mainQueue().append(std::move(work));
}

namespace fake {

std::size_t drainMainQueue() {
    std::size_t ran = 0;
    while (const auto work = mainQueue().takeFirst()) {
        work();
        ++ran;
    }
    return ran;
}

std::size_t mainQueueLength() {
    return mainQueue().length();
}

void resetMainQueue() {
    while (mainQueue().takeFirst()) {
    }
}

} // namespace fake

} // namespace platform
