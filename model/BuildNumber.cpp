#include "model/BuildNumber.h"

#include "model/DecimalInteger.h"
#include "platform/FatalError.h"

#include <string>
#include <string_view>

namespace model {

namespace {

constexpr std::string_view buildKey = "CFBundleVersion";

[[noreturn]] void stop(const platform::NSBundle& bundle, const std::string_view reason) {
    platform::fatalError(bundle.infoFile() + ": " + std::string{reason});
}

[[noreturn]] void stopForBuild(const platform::NSBundle& bundle, const std::string_view fault) {
    stop(bundle, std::string{buildKey} + " " + std::string{fault});
}

} // namespace

std::int64_t buildNumber(const platform::NSBundle& bundle) {
    const auto* const dictionary = bundle.infoDictionary();
    if (!dictionary) stop(bundle, bundle.infoProblem());
    const auto entry = dictionary->find(std::string{buildKey});
    if (entry == dictionary->end()) stopForBuild(bundle, "is missing");
    const auto& text = entry->second;
    if (!text) stopForBuild(bundle, "is not a text");
    const auto build = decimalInteger(*text);
    if (!build) stopForBuild(bundle, "is not a decimal integer of at most 64 bits");
    return *build;
}

} // namespace model
