#include "tests/support/FakeBundle.h"

#include <utility>

namespace platform {

namespace {

constexpr const char* infoFile = "Fake.app/Contents/Info.plist";

NSBundle bundleOf(InfoDictionary dictionary, std::string resourcePath) {
    return {infoFile, std::make_shared<const InfoDictionary>(std::move(dictionary)), {}, std::move(resourcePath)};
}

NSBundle ordinaryBundle() {
    return bundleOf({{"CFBundleVersion", "2105"}}, {});
}

NSBundle& bundle() {
    static NSBundle main = ordinaryBundle();
    return main;
}

} // namespace

const NSBundle& NSBundle::mainBundle() {
    return bundle();
}

namespace fake {

void setMainBundle(NSBundle bundle) {
    platform::bundle() = std::move(bundle);
}

void setMainBundle(InfoDictionary dictionary, std::string resourcePath) {
    setMainBundle(bundleOf(std::move(dictionary), std::move(resourcePath)));
}

void setMainBundleWithoutDictionary(std::string problem) {
    setMainBundle(NSBundle{infoFile, nullptr, std::move(problem), {}});
}

void resetMainBundle() {
    setMainBundle(ordinaryBundle());
}

} // namespace fake

} // namespace platform
