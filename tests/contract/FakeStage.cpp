#include "tests/contract/MachineStage.h"
#include "tests/support/FakeServices.h"

#include <utility>

namespace contract {

namespace {

using platform::OSSystemExtensionProperties;
using simulator::CopyRecord;
namespace fake = platform::fake;

OSSystemExtensionProperties propertiesOf(const CopyRecord& copy) {
    const auto make = copy.isEnabled                ? fake::enabledCopy
                      : copy.isAwaitingUserApproval ? fake::awaitingCopy
                      : copy.isUninstalling         ? fake::uninstallingCopy
                                                    : fake::copyOf;
    return make(copy.identifier, copy.shortVersion, copy.version);
}

simulator::RequestKind kindOf(const Kind kind) {
    if (kind == Kind::activation) return simulator::RequestKind::activation;
    if (kind == Kind::deactivation) return simulator::RequestKind::deactivation;
    return simulator::RequestKind::properties;
}

/// The fake services of the other tests.
class FakeStandIn final : public ScriptedStandIn {
public:
    platform::OSSystemExtensionManager& manager() override {
        return platform::OSSystemExtensionManager::sharedManager();
    }

    std::vector<Submission> submissions() const override {
        std::vector<Submission> submissions;
        for (const auto& [kind, identifier] : manager_.submissions())
            submissions.push_back({kindOf(kind), identifier});
        return submissions;
    }

    void needsApproval(const std::size_t submission) override { manager_.needsApproval(submission); }

    void askReplacement(const std::size_t submission, const CopyRecord& existing,
                        const CopyRecord& replacement) override {
        manager_.askReplacement(submission, propertiesOf(existing), propertiesOf(replacement));
    }

    void finish(const std::size_t submission, const std::int64_t result) override {
        manager_.finish(submission, static_cast<platform::OSSystemExtensionRequestResult>(result));
    }

    void fail(const std::size_t submission, const platform::Error& error) override {
        if (error.domain == platform::OSSystemExtensionErrorDomain) {
            manager_.fail(submission, error.code, error.localizedDescription);
        } else {
            manager_.fail(submission, error);
        }
    }

    void foundProperties(const std::size_t submission, const std::vector<CopyRecord>& copies) override {
        std::vector<OSSystemExtensionProperties> properties;
        for (const auto& copy : copies)
            properties.push_back(propertiesOf(copy));
        manager_.foundProperties(submission, std::move(properties));
    }

    std::vector<platform::OSSystemExtensionReplacementAction> replacementAnswers() const override {
        return manager_.replacementAnswers();
    }

    bool runMainQueue() override { return fake::drainMainQueue() > 0; }

private:
    fake::FreshServices services_;
    fake::SystemExtensions& manager_ = fake::SystemExtensions::shared();
};

TEST(TheFakeOfTheExtensionService, FinishesNoPropertiesRequest) {
    FakeStandIn fake;
    Record record;
    const auto listener = std::make_shared<Listener>("it", record);
    const auto request = makeRequest(Kind::properties, camera);
    request->setDelegate(listener);
    fake.manager().submitRequest(request);
    fake.finish(0, 0);
    fake.runMainQueue();
    EXPECT_THAT(record.lines, testing::IsEmpty());
}

} // namespace

std::unique_ptr<Stage> makeStage() {
    return std::make_unique<MachineStage>(std::make_unique<FakeStandIn>());
}

} // namespace contract
