#include "views/DriverLoadingView.h"

#include "model/BuildNumber.h"
#include "platform/Bundle.h"
#include "platform/ui/Elements.h"
#include "views/CardView.h"
#include "views/StatusView.h"

#include <algorithm>

namespace views {

using model::InstallStatus;
using model::SysExtInfo;
using namespace platform::ui;

namespace {

/// The driver without a card, regardless of which one does not count for the install status.
constexpr const char* cardlessBundleId = "com.kelvra.driverkit.base";
constexpr std::ptrdiff_t neededDrivers = 2;
constexpr Color borderColor{0.8588, 0.8588, 0.8588, 1};

} // namespace

View DriverLoadingView::body() const {
    return observing(viewModel, [self = *this] { return self.screen(); });
}

InstallStatus DriverLoadingView::installStatus() const {
    const auto count = [this](const bool SysExtInfo::*flag) {
        const auto& sei = viewModel->sei();
        return std::count_if(sei.begin(), sei.end(),
                             [&](const SysExtInfo& info) { return info.id != baseBundleId && info.*flag; });
    };
    if (count(&SysExtInfo::enabled) == neededDrivers) return InstallStatus::allEnabled;
    if (count(&SysExtInfo::awaiting) > 0) return InstallStatus::awaitingAllow;
    return InstallStatus::nothingInstalled;
}

View DriverLoadingView::screen() const {
    return VStack{HorizontalAlignment::center,
                  StatusView{.installStatus = installStatus(),
                             .notActivatedText = "Both drivers need to be activated to run the camera",
                             .activatedText = "Woohoo, you are all set!",
                             .orangeText = "Open Privacy & Security in System Settings to allow the extensions."},
                  Spacer{}, cardBlock(), Spacer{}}
        .frame({.width = 450, .height = 230});
}

View DriverLoadingView::cardBlock() const {
    return ZStack{Alignment::center, cardList()}
        .frame({.width = 400, .height = 134, .alignment = Alignment::trailing})
        .padding()
        .groupBoxStyle(DefaultGroupBoxStyle{});
}

View DriverLoadingView::cardList() const {
    return VStack{HorizontalAlignment::center, Spacer{},
                  ForEach{viewModel->sei().size(), [this](const std::size_t index) { return row(index); }}, Spacer{}}
        .frame({.maxWidth = infinity, .maxHeight = infinity, .alignment = Alignment::leading})
        .background(Color::white)
        .border(borderColor, 2);
}

View DriverLoadingView::row(const std::size_t index) const {
    const SysExtInfo& info = viewModel->sei().at(index);
    if (info.id == cardlessBundleId) return EmptyView{};
    if (index == viewModel->sei().size() - 1) return Group{card(info)};
    return Group{card(info), Divider{}};
}

View DriverLoadingView::card(const SysExtInfo& sei) const {
    return CardView{.sei = sei,
                    .activate = [model = viewModel](const std::string& id) { model->activateExt(id); },
                    .deactivate = [model = viewModel](const std::string& id) { model->deactivateExt(id); },
                    .enumerate = [model = viewModel] { model->enumerate(); },
                    .version = model::buildNumber(platform::NSBundle::mainBundle())};
}

} // namespace views
