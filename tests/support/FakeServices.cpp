#include "tests/support/FakeServices.h"

#include "platform/DispatchQueue.h"
#include "platform/Log.h"
#include "platform/Output.h"

#include <deque>
#include <utility>

namespace platform {

namespace {

constexpr const char* infoFile = "Fake.app/Contents/Info.plist";

NSBundle bundleOf(InfoDictionary dictionary, std::string resourcePath) {
    return {infoFile, std::make_shared<const InfoDictionary>(std::move(dictionary)), {}, std::move(resourcePath)};
}

/// The state of the services between two resets.
struct Held {
    std::deque<std::function<void()>> work;
    std::vector<std::string> logged;
    std::vector<std::string> printed;
    NSBundle bundle = bundleOf({{"CFBundleVersion", "2105"}}, {});
};

Held& held() {
    static Held services;
    return services;
}

} // namespace

void DispatchQueue::async(std::function<void()> work) const {
    held().work.push_back(std::move(work));
}

const NSBundle& NSBundle::mainBundle() {
    return held().bundle;
}

void writeLogLine(const std::string& line) {
    held().logged.push_back(line);
}

void printLine(const std::string_view line) {
    held().printed.emplace_back(line);
}

namespace fake {

std::size_t drainMainQueue() {
    std::size_t ran = 0;
    for (; !held().work.empty(); ++ran) {
        const auto first = std::move(held().work.front());
        held().work.pop_front();
        first();
    }
    return ran;
}

void setMainBundle(NSBundle bundle) {
    held().bundle = std::move(bundle);
}

void setMainBundle(InfoDictionary dictionary, std::string resourcePath) {
    setMainBundle(bundleOf(std::move(dictionary), std::move(resourcePath)));
}

void setMainBundleWithoutDictionary(std::string problem) {
    setMainBundle(NSBundle{infoFile, nullptr, std::move(problem), {}});
}

const std::vector<std::string>& loggedLines() {
    return held().logged;
}

void resetLog() {
    held().logged.clear();
}

const std::vector<std::string>& printedLines() {
    return held().printed;
}

void FreshServices::reset() {
    // Queued work may own the last reference to an object that uses the services.
    while (!held().work.empty())
        held().work.pop_front();
    SystemExtensions::shared().reset();
    held() = Held{};
}

} // namespace fake

} // namespace platform
