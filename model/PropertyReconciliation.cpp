#include "model/PropertyReconciliation.h"

#include "model/DecimalInteger.h"
#include "platform/Output.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace model {

namespace {

using platform::OSSystemExtensionProperties;
using Records = platform::Published<std::vector<SysExtInfo>>;

/// One record of the published list. Its fields are changed in place.
class PublishedRecord {
public:
    PublishedRecord(Records& records, const std::size_t position) : records_{records}, position_{position} {}

    const SysExtInfo& get() const { return records_.get().at(position_); }

    template <typename Value>
    void set(Value SysExtInfo::*const field, std::type_identity_t<Value> value) {
        records_.modify([&](auto& records) { records.at(position_).*field = std::move(value); });
    }

private:
    Records& records_;
    std::size_t position_;
};

struct Seen {
    bool enabled = false;
    bool awaiting = false;
    bool uninstalling = false;
};

std::optional<PublishedRecord> findRecord(Records& records, const std::string_view identifier) {
    const auto& list = records.get();
    const auto found = std::find_if(list.begin(), list.end(), [&](const auto& each) { return each.id == identifier; });
    if (found == list.end()) return std::nullopt;
    return PublishedRecord{records, static_cast<std::size_t>(found - list.begin())};
}

void takeVersion(PublishedRecord& record, const OSSystemExtensionProperties& copy) {
    record.set(&SysExtInfo::version, copy.bundleShortVersion + "/" + copy.bundleVersion);
    if (const auto version = decimalInteger(copy.bundleVersion)) record.set(&SysExtInfo::intversion, *version);
}

void takeCopy(PublishedRecord& record, const OSSystemExtensionProperties& copy, Seen& seen) {
    record.set(&SysExtInfo::present, true);
    if (copy.isEnabled) {
        record.set(&SysExtInfo::enabled, true);
        takeVersion(record, copy);
        seen.enabled = true;
    }
    if (copy.isAwaitingUserApproval) {
        record.set(&SysExtInfo::awaiting, true);
        seen.awaiting = true;
    }
    if (copy.isUninstalling) {
        record.set(&SysExtInfo::uninst, true);
        seen.uninstalling = true;
    }
}

void clearUnseen(PublishedRecord& record, const Seen& seen) {
    if (!seen.enabled) record.set(&SysExtInfo::enabled, false);
    if (!seen.awaiting) record.set(&SysExtInfo::awaiting, false);
    if (!seen.uninstalling) record.set(&SysExtInfo::uninst, false);
}

/// An enabled copy hides a newer one that awaits approval.
std::string_view stateText(const SysExtInfo& record) {
    if (record.enabled) return "Enabled";
    if (record.awaiting) return "Await approval";
    if (record.reboot) return "Need reboot";
    if (record.uninst) return "Uninstalling";
    return "";
}

std::string spelled(const bool flag) {
    return flag ? "true" : "false";
}

std::string diagnosticLine(const SysExtInfo& record) {
    return record.id + " " + record.version + " State: " + record.state + " [" + spelled(record.enabled) + " " +
           spelled(record.awaiting) + " " + spelled(record.uninst) + "]";
}

} // namespace

void reconcile(const std::vector<OSSystemExtensionProperties>& properties, Records& records) {
    if (properties.empty()) return;
    auto record = findRecord(records, properties.front().bundleIdentifier);
    if (!record) return;
    Seen seen;
    for (const auto& copy : properties) {
        if (copy.bundleIdentifier == record->get().id) takeCopy(*record, copy, seen);
    }
    clearUnseen(*record, seen);
    record->set(&SysExtInfo::state, std::string{stateText(record->get())});
    platform::printLine(diagnosticLine(record->get()));
}

} // namespace model
