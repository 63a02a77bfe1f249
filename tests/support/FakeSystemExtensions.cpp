#include "tests/support/FakeServices.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace platform {

OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    return fake::SystemExtensions::shared();
}

namespace fake {

namespace {

using Copy = OSSystemExtensionProperties;

Copy withFlag(Copy copy, bool Copy::*const flag) {
    copy.*flag = true;
    return copy;
}

} // namespace

SystemExtensions& SystemExtensions::shared() {
    static SystemExtensions manager;
    return manager;
}

void SystemExtensions::submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) {
    outstanding_[submissions_.size()].request = request;
    submissions_.push_back({request->kind(), request->identifier()});
}

std::shared_ptr<OSSystemExtensionRequest> SystemExtensions::request(const std::size_t submission) const {
    const auto found = outstanding_.find(submission);
    return found == outstanding_.end() ? nullptr : found->second.request;
}

std::size_t SystemExtensions::latest(const OSSystemExtensionRequest::Kind kind, const std::string& identifier) const {
    const auto found = std::find_if(outstanding_.rbegin(), outstanding_.rend(), [&](const auto& entry) {
        return !entry.second.hasLastAnswer && submissions_[entry.first] == Submission{kind, identifier};
    });
    if (found == outstanding_.rend()) throw std::out_of_range{"no such request waits for an answer"};
    return found->first;
}

bool SystemExtensions::waits(const std::size_t submission) const {
    if (submission >= submissions_.size()) throw std::out_of_range{"there is no such submission"};
    const auto found = outstanding_.find(submission);
    return found != outstanding_.end() && !found->second.hasLastAnswer;
}

void SystemExtensions::answer(const std::size_t submission, Answer answer) {
    if (!waits(submission)) return;
    const auto& request = outstanding_.at(submission).request;
    request->queue().async([request, answer = std::move(answer)] {
        if (const auto delegate = request->delegate()) answer(*delegate, *request);
    });
}

void SystemExtensions::answerLast(const std::size_t submission, Answer answer) {
    if (!waits(submission)) return;
    this->answer(submission, std::move(answer));
    auto& entry = outstanding_.at(submission);
    entry.hasLastAnswer = true;
    entry.request->queue().async([this, submission] { outstanding_.erase(submission); });
}

void SystemExtensions::needsApproval(const std::size_t submission) {
    answer(submission, [](auto& delegate, const auto& request) { delegate.requestNeedsUserApproval(request); });
}

void SystemExtensions::askReplacement(const std::size_t submission, OSSystemExtensionProperties existing,
                                      OSSystemExtensionProperties replacement) {
    if (!waits(submission)) return;
    const auto kept = request(submission);
    kept->queue().async([this, kept, existing = std::move(existing), replacement = std::move(replacement)] {
        const auto delegate = kept->delegate();
        replacementAnswers_.push_back(delegate
                                          ? delegate->requestActionForReplacingExtension(*kept, existing, replacement)
                                          : OSSystemExtensionReplacementAction::cancel);
    });
}

void SystemExtensions::finish(const std::size_t submission, const OSSystemExtensionRequestResult result) {
    if (submissions_.at(submission).kind == OSSystemExtensionRequest::Kind::properties) return;
    answerLast(submission,
               [result](auto& delegate, const auto& request) { delegate.requestDidFinishWithResult(request, result); });
}

void SystemExtensions::fail(const std::size_t submission, Error error) {
    answerLast(submission, [error = std::move(error)](auto& delegate, const auto& request) {
        delegate.requestDidFailWithError(request, error);
    });
}

void SystemExtensions::fail(const std::size_t submission, const std::int64_t code, std::string description) {
    fail(submission, Error{std::string{OSSystemExtensionErrorDomain}, code, std::move(description)});
}

void SystemExtensions::foundProperties(const std::size_t submission,
                                       std::vector<OSSystemExtensionProperties> properties) {
    answerLast(submission, [properties = std::move(properties)](auto& delegate, const auto& request) {
        delegate.requestFoundProperties(request, properties);
    });
}

void SystemExtensions::reset() {
    submissions_.clear();
    outstanding_.clear();
    replacementAnswers_.clear();
}

Copy copyOf(std::string identifier, std::string shortVersion, std::string version) {
    Copy copy;
    copy.description = "<" + identifier + " " + shortVersion + "/" + version + ">";
    copy.bundleIdentifier = std::move(identifier);
    copy.bundleShortVersion = std::move(shortVersion);
    copy.bundleVersion = std::move(version);
    return copy;
}

Copy enabledCopy(std::string identifier, std::string shortVersion, std::string version) {
    return withFlag(copyOf(std::move(identifier), std::move(shortVersion), std::move(version)), &Copy::isEnabled);
}

Copy awaitingCopy(std::string identifier, std::string shortVersion, std::string version) {
    return withFlag(copyOf(std::move(identifier), std::move(shortVersion), std::move(version)),
                    &Copy::isAwaitingUserApproval);
}

Copy uninstallingCopy(std::string identifier, std::string shortVersion, std::string version) {
    return withFlag(copyOf(std::move(identifier), std::move(shortVersion), std::move(version)), &Copy::isUninstalling);
}

} // namespace fake

} // namespace platform
