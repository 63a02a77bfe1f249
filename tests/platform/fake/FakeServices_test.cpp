#include "tests/support/FakeServices.h"

#include "platform/DispatchQueue.h"

#include <optional>
#include <stdexcept>
#include <string>

// How tests drive the fakes. That they behave like a system's services is told by the tests of the contract.

namespace platform::fake {
namespace {

using testing::ElementsAre;

class AFakeMainQueue : public testing::Test {
protected:
    std::optional<FreshServices> services{std::in_place};
    std::string order;
};

TEST_F(AFakeMainQueue, RunsNothingByItself) {
    DispatchQueue::main().async([this] { order += "a"; });
    EXPECT_EQ(order, "");
}

TEST_F(AFakeMainQueue, DrainsInOrderWithWhatIsAddedMeanwhile) {
    DispatchQueue::main().async([this] {
        order += "a";
        DispatchQueue::main().async([this] { order += "c"; });
    });
    DispatchQueue::main().async([this] { order += "b"; });
    EXPECT_EQ(drainMainQueue(), 3U);
    EXPECT_EQ(order, "abc");
}

TEST_F(AFakeMainQueue, ForgetsItsWorkWithTheServices) {
    DispatchQueue::main().async([this] { order += "a"; });
    services.reset();
    EXPECT_EQ(drainMainQueue(), 0U);
    EXPECT_EQ(order, "");
}

class FakeSystemExtensions : public testing::Test {
protected:
    static constexpr auto activation = OSSystemExtensionRequest::Kind::activation;

    void submitActivation(const std::string& identifier) {
        manager.submitRequest(
            OSSystemExtensionRequest::activationRequestForExtension(identifier, DispatchQueue::main()));
    }

    FreshServices services;
    SystemExtensions& manager = SystemExtensions::shared();
};

TEST_F(FakeSystemExtensions, RecordSubmissionsInOrder) {
    submitActivation("b");
    submitActivation("a");
    EXPECT_THAT(manager.submissions(), ElementsAre(Submission{activation, "b"}, Submission{activation, "a"}));
}

TEST_F(FakeSystemExtensions, DropWhatComesAfterTheLastAnswer) {
    submitActivation("a");
    manager.fail(0, 4, "not here");
    drainMainQueue();
    manager.finish(0);
    manager.needsApproval(0);
    EXPECT_EQ(drainMainQueue(), 0U);
}

TEST_F(FakeSystemExtensions, FindTheLatestRequestThatWaits) {
    submitActivation("a");
    submitActivation("a");
    EXPECT_EQ(manager.latest(activation, "a"), 1U);
    manager.finish(1);
    EXPECT_EQ(manager.latest(activation, "a"), 0U);
    EXPECT_THROW(manager.latest(activation, "b"), std::out_of_range);
}

TEST_F(FakeSystemExtensions, RefuseToAnswerWhatWasNeverAsked) {
    EXPECT_THROW(manager.finish(0), std::out_of_range);
}

} // namespace
} // namespace platform::fake
