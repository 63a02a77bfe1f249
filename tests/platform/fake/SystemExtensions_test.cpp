#include "tests/support/FakeServices.h"

#include <optional>
#include <stdexcept>

namespace platform::fake {
namespace {

using testing::ElementsAre;

class Listener final : public OSSystemExtensionRequestDelegate {
public:
    OSSystemExtensionReplacementAction
    requestActionForReplacingExtension(const OSSystemExtensionRequest&, const OSSystemExtensionProperties& existing,
                                       const OSSystemExtensionProperties& replacement) override {
        heard.push_back("replace " + existing.description + " by " + replacement.description);
        return OSSystemExtensionReplacementAction::replace;
    }
    void requestNeedsUserApproval(const OSSystemExtensionRequest& request) override {
        heard.push_back("approve " + request.identifier());
    }
    void requestDidFinishWithResult(const OSSystemExtensionRequest&,
                                    const OSSystemExtensionRequestResult result) override {
        heard.push_back("finished " + std::to_string(static_cast<std::int64_t>(result)));
    }
    void requestDidFailWithError(const OSSystemExtensionRequest&, const Error& error) override {
        heard.push_back("failed " + std::to_string(error.code) + " " + error.localizedDescription);
    }
    void requestFoundProperties(const OSSystemExtensionRequest&,
                                const std::vector<OSSystemExtensionProperties>& properties) override {
        heard.push_back("found " + std::to_string(properties.size()));
    }

    std::vector<std::string> heard;
};

class FakeSystemExtensions : public testing::Test {
protected:
    std::weak_ptr<OSSystemExtensionRequest> submitActivation(const std::string& identifier) {
        const auto request = OSSystemExtensionRequest::activationRequestForExtension(identifier, DispatchQueue::main());
        request->setDelegate(listener);
        OSSystemExtensionManager::sharedManager().submitRequest(request);
        return request;
    }

    FreshServices services;
    SystemExtensions& manager = SystemExtensions::shared();
    std::shared_ptr<Listener> listener = std::make_shared<Listener>();
};

TEST_F(FakeSystemExtensions, RecordSubmissionsInOrder) {
    submitActivation("b");
    submitActivation("a");
    const auto activation = OSSystemExtensionRequest::Kind::activation;
    EXPECT_THAT(manager.submissions(), ElementsAre(Submission{activation, "b"}, Submission{activation, "a"}));
}

TEST_F(FakeSystemExtensions, AnswerOnlyWhenTheQueueIsDrained) {
    submitActivation("a");
    manager.needsApproval(0);
    EXPECT_THAT(listener->heard, ElementsAre());
    drainMainQueue();
    EXPECT_THAT(listener->heard, ElementsAre("approve a"));
}

TEST_F(FakeSystemExtensions, KeepARequestUntilItsLastAnswerWasDelivered) {
    const auto request = submitActivation("a");
    manager.finish(0);
    EXPECT_FALSE(request.expired());
    drainMainQueue();
    EXPECT_TRUE(request.expired());
    EXPECT_EQ(manager.outstanding(), 0U);
}

TEST_F(FakeSystemExtensions, DropWhatComesAfterTheLastAnswer) {
    submitActivation("a");
    manager.fail(0, 4, "not here");
    manager.finish(0);
    manager.needsApproval(0);
    drainMainQueue();
    manager.foundProperties(0, {});
    drainMainQueue();
    EXPECT_THAT(listener->heard, ElementsAre("failed 4 not here"));
}

TEST_F(FakeSystemExtensions, DropAnAnswerToADelegateThatIsGone) {
    submitActivation("a");
    manager.askReplacement(0, copyOf("a", "1", "1"), copyOf("a", "2", "2"));
    manager.finish(0);
    listener.reset();
    drainMainQueue();
    EXPECT_THAT(manager.replacementAnswers(), ElementsAre(OSSystemExtensionReplacementAction::cancel));
    EXPECT_EQ(manager.outstanding(), 0U);
}

TEST_F(FakeSystemExtensions, ReportTheAnswerToAReplacement) {
    submitActivation("a");
    manager.askReplacement(0, copyOf("a", "1.0", "10"), copyOf("a", "2.0", "20"));
    drainMainQueue();
    EXPECT_THAT(listener->heard, ElementsAre("replace <a 1.0/10> by <a 2.0/20>"));
    EXPECT_THAT(manager.replacementAnswers(), ElementsAre(OSSystemExtensionReplacementAction::replace));
}

TEST_F(FakeSystemExtensions, FindTheLatestRequestThatWaits) {
    const auto activation = OSSystemExtensionRequest::Kind::activation;
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
