#include "tests/contract/MachineStage.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"
#include "tests/macos/gnustep/StandIns.h"

namespace contract {

namespace {

using simulator::CopyRecord;
using standin::Object;

Object propertiesOf(const CopyRecord& copy) {
    return standin::makeProperties(copy.identifier.c_str(), copy.shortVersion.c_str(), copy.version.c_str(),
                                   copy.isEnabled, copy.isAwaitingUserApproval, copy.isUninstalling);
}

/// The scripted service of macOS.
class MacosStandIn final : public ScriptedStandIn {
public:
    MacosStandIn() { service_.forget(); }

    platform::OSSystemExtensionManager& manager() override {
        return platform::OSSystemExtensionManager::sharedManager();
    }

    std::vector<Submission> submissions() const override {
        std::vector<Submission> submissions;
        for (const std::string& submission : service_.submissions()) {
            const std::size_t space = submission.find(' ');
            submissions.push_back(
                {simulator::requestKindNamed(submission.substr(0, space)).value(), submission.substr(space + 1)});
        }
        return submissions;
    }

    void needsApproval(const std::size_t submission) override { service_.needsApproval(submission); }

    void askReplacement(const std::size_t submission, const CopyRecord& existing,
                        const CopyRecord& replacement) override {
        service_.askReplacement(submission, propertiesOf(existing), propertiesOf(replacement));
    }

    void finish(const std::size_t submission, const std::int64_t result) override {
        service_.finish(submission, result);
    }

    void fail(const std::size_t submission, const platform::Error& error) override {
        const bool isOurs = error.domain == platform::OSSystemExtensionErrorDomain;
        service_.fail(submission, standin::makeError(isOurs ? standin::serviceDomain() : error.domain.c_str(),
                                                     error.code, error.localizedDescription.c_str()));
    }

    void foundProperties(const std::size_t submission, const std::vector<CopyRecord>& copies) override {
        std::vector<Object> members;
        for (const CopyRecord& copy : copies)
            members.push_back(propertiesOf(copy));
        service_.found(submission, standin::makeArray(members));
    }

    std::vector<platform::OSSystemExtensionReplacementAction> replacementAnswers() const override {
        std::vector<platform::OSSystemExtensionReplacementAction> answers;
        for (const long answer : service_.replacementAnswers())
            answers.push_back(static_cast<platform::OSSystemExtensionReplacementAction>(answer));
        return answers;
    }

    bool runMainQueue() override { return standin::runMainQueue(); }

private:
    standin::ScriptedExtensions& service_ = standin::ScriptedExtensions::shared();
};

} // namespace

std::unique_ptr<Stage> makeStage() {
    return std::make_unique<MachineStage>(std::make_unique<MacosStandIn>());
}

} // namespace contract
