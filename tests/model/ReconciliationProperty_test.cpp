#include "model/PropertyReconciliation.h"

#include "platform/ObservableObject.h"
#include "platform/Published.h"
#include "tests/model/RecordText.h"
#include "tests/support/FakeServices.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <vector>

// Random answers for random records, against the outcome put as what holds afterwards instead of step by step.

namespace model {
namespace {

using Copy = platform::OSSystemExtensionProperties;
using Copies = std::vector<Copy>;

struct Outcome {
    std::vector<std::string> records;
    std::size_t notifications = 0;
    std::vector<std::string> printed;
};

bool operator==(const Outcome& one, const Outcome& other) {
    return one.records == other.records && one.notifications == other.notifications && one.printed == other.printed;
}

void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.notifications << " notifications, records " << testing::PrintToString(outcome.records)
         << ", printed " << testing::PrintToString(outcome.printed);
}

/// The build numbers that the random answers hold, and what each is as an integer.
struct Build {
    const char* text;
    std::optional<std::int64_t> integer;
};
const std::array<Build, 9> builds{{{"1", 1},
                                   {"2105", 2105},
                                   {"-7", -7},
                                   {"+7", 7},
                                   {"007", 7},
                                   {"", std::nullopt},
                                   {"2.1.5", std::nullopt},
                                   {"9223372036854775808", std::nullopt},
                                   {"\u0663", std::nullopt}}};

std::optional<std::int64_t> integerOf(const std::string& text) {
    const auto found =
        std::find_if(builds.begin(), builds.end(), [&](const auto& build) { return build.text == text; });
    return found->integer;
}

std::string flag(const bool value) {
    return value ? "true" : "false";
}

Copies filtered(const Copies& copies, const std::string& identifier) {
    Copies some;
    std::copy_if(copies.begin(), copies.end(), std::back_inserter(some),
                 [&](const auto& copy) { return copy.bundleIdentifier == identifier; });
    return some;
}

std::size_t count(const Copies& copies, bool Copy::*const property) {
    return static_cast<std::size_t>(
        std::count_if(copies.begin(), copies.end(), [&](const auto& copy) { return copy.*property; }));
}

void takeVersions(SysExtInfo& record, const Copies& matching) {
    const auto enabled = [](const Copy& copy) { return copy.isEnabled; };
    const auto last = std::find_if(matching.rbegin(), matching.rend(), enabled);
    if (last != matching.rend()) record.version = last->bundleShortVersion + "/" + last->bundleVersion;
    const auto lastInteger = std::find_if(matching.rbegin(), matching.rend(), [&](const Copy& copy) {
        return enabled(copy) && integerOf(copy.bundleVersion).has_value();
    });
    if (lastInteger != matching.rend()) record.intversion = integerOf(lastInteger->bundleVersion).value();
}

std::string stateOf(const SysExtInfo& record) {
    return record.enabled    ? "Enabled"
           : record.awaiting ? "Await approval"
           : record.reboot   ? "Need reboot"
           : record.uninst   ? "Uninstalling"
                             : "";
}

std::size_t writesFor(const Copies& matching) {
    std::size_t writes = matching.size() + 1; // present for each, the state once
    for (const auto property : {&Copy::isEnabled, &Copy::isAwaitingUserApproval, &Copy::isUninstalling}) {
        const auto having = count(matching, property);
        writes += having == 0 ? 1 : having; // set for each, or taken back once
    }
    writes += count(matching, &Copy::isEnabled);
    return writes + static_cast<std::size_t>(std::count_if(matching.begin(), matching.end(), [](const Copy& copy) {
               return copy.isEnabled && integerOf(copy.bundleVersion).has_value();
           }));
}

Outcome restated(std::vector<SysExtInfo> records, const Copies& copies) {
    const auto record = std::find_if(records.begin(), records.end(), [&](const auto& each) {
        return !copies.empty() && each.id == copies.front().bundleIdentifier;
    });
    if (record == records.end()) return {textsOf(records), 0, {}};
    const auto matching = filtered(copies, record->id);
    record->present = true;
    record->enabled = count(matching, &Copy::isEnabled) > 0;
    record->awaiting = count(matching, &Copy::isAwaitingUserApproval) > 0;
    record->uninst = count(matching, &Copy::isUninstalling) > 0;
    takeVersions(*record, matching);
    record->state = stateOf(*record);
    const auto line = record->id + " " + record->version + " State: " + record->state + " [" + flag(record->enabled) +
                      " " + flag(record->awaiting) + " " + flag(record->uninst) + "]";
    return {textsOf(records), writesFor(matching), {line}};
}

class Random {
public:
    std::vector<SysExtInfo> records() {
        auto records = initialRecords();
        if (below(20) == 0) records.clear();
        for (auto& record : records) {
            for (const auto field : {&SysExtInfo::present, &SysExtInfo::enabled, &SysExtInfo::awaiting,
                                     &SysExtInfo::reboot, &SysExtInfo::uninst})
                record.*field = below(2) == 0;
            record.intversion = static_cast<std::int64_t>(below(3000));
            record.version = "0/" + std::to_string(record.intversion);
        }
        return records;
    }

    Copies copies() {
        const auto favourite = identifier();
        Copies copies;
        for (auto length = below(7); length > 0; --length)
            copies.push_back(copy(below(3) == 0 ? identifier() : favourite));
        return copies;
    }

private:
    std::string identifier() {
        static constexpr std::array identifiers{"com.kelvra.driverkit.base", "com.kelvra.ip-camera.cmio",
                                                "com.kelvra.driverkit.usb-to-poe", "com.kelvra.ip-camera", ""};
        return identifiers[below(identifiers.size())];
    }

    Copy copy(std::string identifier) {
        Copy copy;
        copy.bundleIdentifier = std::move(identifier);
        copy.bundleShortVersion = std::to_string(below(3)) + "." + std::to_string(below(3));
        copy.bundleVersion = builds[below(builds.size())].text;
        copy.isEnabled = below(3) == 0;
        copy.isAwaitingUserApproval = below(3) == 0;
        copy.isUninstalling = below(3) == 0;
        return copy;
    }

    std::size_t below(const std::size_t bound) { return engine_() % bound; }

    std::mt19937_64 engine_{19450};
};

/// A published list of records on its own.
class Holder : public platform::ObservableObject {
public:
    explicit Holder(std::vector<SysExtInfo> initial) : records{*this, std::move(initial)} {}

    platform::Published<std::vector<SysExtInfo>> records;
};

Outcome reconciled(std::vector<SysExtInfo> records, const Copies& copies) {
    const platform::fake::FreshServices services;
    Holder holder{std::move(records)};
    Outcome outcome;
    const auto subscription = holder.objectWillChange().subscribe([&] { ++outcome.notifications; });
    reconcile(copies, holder.records);
    outcome.records = textsOf(holder.records.get());
    outcome.printed = platform::fake::printedLines();
    return outcome;
}

TEST(RandomAnswers, AreFoldedAsTheDefinitionSays) {
    Random random;
    int folded = 0;
    for (int round = 0; round < 20'000; ++round) {
        const auto records = random.records();
        const auto copies = random.copies();
        const auto expected = restated(records, copies);
        ASSERT_EQ(reconciled(records, copies), expected) << "round " << round;
        if (!expected.printed.empty()) ++folded;
    }
    EXPECT_GT(folded, 5'000);
    EXPECT_LT(folded, 19'000);
}

TEST(RandomAnswers, FoldedTwiceLeaveWhatTheyLeftOnce) {
    Random random;
    for (int round = 0; round < 5'000; ++round) {
        const auto copies = random.copies();
        const platform::fake::FreshServices services;
        Holder holder{random.records()};
        reconcile(copies, holder.records);
        const auto once = textsOf(holder.records.get());
        reconcile(copies, holder.records);
        ASSERT_EQ(textsOf(holder.records.get()), once) << "round " << round;
    }
}

} // namespace
} // namespace model
