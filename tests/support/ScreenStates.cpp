#include "tests/support/ScreenStates.h"

#include "tests/support/DriverLoadingViewModelTestAccess.h"
#include "views/DriverLoadingView.h"

#include <cstdint>
#include <limits>

namespace platform::fake {

namespace {

constexpr std::size_t cameraIndex = 1;
constexpr std::size_t networkIndex = 2;

constexpr std::int64_t oldBuild = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t newBuild = std::numeric_limits<std::int64_t>::max();

void enable(model::SysExtInfo& record, const std::int64_t build) {
    record.state = "Enabled";
    record.present = true;
    record.enabled = true;
    record.intversion = build;
}

void await(model::SysExtInfo& record) {
    record.state = "Await approval";
    record.present = true;
    record.awaiting = true;
}

} // namespace

std::vector<ScreenState> screenStates() {
    std::vector<ScreenState> states;
    const auto add = [&](const char* name, const auto& change) {
        auto records = model::initialRecords();
        change(records[cameraIndex], records[networkIndex]);
        states.push_back({name, records});
    };
    using Record = model::SysExtInfo;
    add("WhereNothingIsInstalled", [](Record&, Record&) {});
    add("WhereApprovalIsAwaited", [](Record& camera, Record&) { await(camera); });
    add("WhereOneIsEnabledAndOneAwaited", [](Record& camera, Record& network) {
        await(camera);
        enable(network, newBuild);
    });
    add("WhereAnUpgradeIsOffered", [](Record& camera, Record&) { enable(camera, oldBuild); });
    add("WhereARestartIsDue", [](Record& camera, Record&) {
        camera.state = "Need reboot";
        camera.reboot = true;
    });
    add("WhereAllAreEnabled", [](Record& camera, Record& network) {
        enable(camera, newBuild);
        enable(network, newBuild);
    });
    return states;
}

ui::View screenOf(const ScreenState& state) {
    const auto model = model::DriverLoadingViewModel::create();
    model::DriverLoadingViewModelTestAccess::setRecords(*model, state.records);
    return views::DriverLoadingView{.viewModel = model, .baseBundleId = "com.kelvra.driverkit.base"};
}

} // namespace platform::fake
