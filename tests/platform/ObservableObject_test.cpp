#include "platform/ObservableObject.h"
#include "platform/Published.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {
namespace {

class Counter : public ObservableObject {
public:
    Published<int> count{*this, 0};
    Published<std::vector<std::string>> names{*this, {"a", "b"}};
};

TEST(APublishedField, NotifiesBeforeItChanges) {
    Counter counter;
    std::optional<int> seen;
    const auto subscription = counter.objectWillChange().subscribe([&] { seen = counter.count.get(); });
    counter.count = 7;
    EXPECT_EQ(seen, 0);
    EXPECT_EQ(counter.count.get(), 7);
}

TEST(APublishedField, NotifiesOnAnEqualValue) {
    Counter counter;
    int notifications = 0;
    const auto subscription = counter.objectWillChange().subscribe([&] { ++notifications; });
    counter.count = 0;
    EXPECT_EQ(notifications, 1);
}

TEST(APublishedField, CountsAChangeInPlaceAsOneAssignment) {
    Counter counter;
    int notifications = 0;
    const auto subscription = counter.objectWillChange().subscribe([&] { ++notifications; });
    counter.names.modify([](auto& names) { names[1] = "c"; });
    EXPECT_EQ(notifications, 1);
    EXPECT_EQ(counter.names.get(), (std::vector<std::string>{"a", "c"}));
}

TEST(ASubscription, EndsWhenItIsDestroyed) {
    ObjectWillChangePublisher publisher;
    int notifications = 0;
    {
        const auto subscription = publisher.subscribe([&] { ++notifications; });
    }
    publisher.send();
    EXPECT_EQ(notifications, 0);
}

TEST(ASubscription, CanOutliveWhatItObserves) {
    auto kept = std::make_shared<int>(0);
    const std::weak_ptr<int> subscriber = kept;
    Subscription subscription;
    {
        ObjectWillChangePublisher publisher;
        subscription = publisher.subscribe([kept = std::move(kept)] {});
    }
    subscription = Subscription{};
    EXPECT_TRUE(subscriber.expired());
}

TEST(ASubscription, EndsTheOneItReplaces) {
    ObjectWillChangePublisher publisher;
    std::string calls;
    auto subscription = publisher.subscribe([&] { calls += "first"; });
    subscription = publisher.subscribe([&] { calls += "second"; });
    publisher.send();
    EXPECT_EQ(calls, "second");
}

class ANotification : public testing::Test {
protected:
    ObjectWillChangePublisher publisher;
    std::string calls;
};

TEST_F(ANotification, CallsSubscribersInOrder) {
    const auto first = publisher.subscribe([&] { calls += "1"; });
    const auto second = publisher.subscribe([&] { calls += "2"; });
    publisher.send();
    EXPECT_EQ(calls, "12");
}

TEST_F(ANotification, DoesNotCallThoseWhoSubscribeInsideIt) {
    Subscription inner;
    const auto outer = publisher.subscribe([&] {
        calls += "o";
        inner = publisher.subscribe([&] { calls += "i"; });
    });
    publisher.send();
    EXPECT_EQ(calls, "o");
}

TEST_F(ANotification, DoesNotCallThoseWhoseSubscriptionEndedInsideIt) {
    Subscription second;
    const auto first = publisher.subscribe([&] {
        calls += "1";
        second = Subscription{};
    });
    second = publisher.subscribe([&] { calls += "2"; });
    publisher.send();
    EXPECT_EQ(calls, "1");
}

TEST_F(ANotification, LetsASubscriberEndItsOwnSubscription) {
    auto kept = std::make_shared<int>(0);
    std::optional<Subscription> own;
    own = publisher.subscribe([&own, kept] {
        own.reset();
        ++*kept;
    });
    publisher.send();
    publisher.send();
    EXPECT_EQ(*kept, 1);
    EXPECT_EQ(kept.use_count(), 1);
}

TEST_F(ANotification, CallsTheOthersWhenOneIsDestroyedInsideIt) {
    auto first = std::make_unique<Subscription>(publisher.subscribe([&] { calls += "1"; }));
    const auto second = publisher.subscribe([&] {
        calls += "2";
        first.reset();
    });
    const auto third = publisher.subscribe([&] { calls += "3"; });
    publisher.send();
    publisher.send();
    EXPECT_EQ(calls, "12323");
}

} // namespace
} // namespace platform
