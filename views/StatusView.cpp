#include "views/StatusView.h"

#include "platform/ui/Elements.h"
#include "views/HexColor.h"

namespace views {

using model::InstallStatus;
using namespace platform::ui;

namespace {

const char* iconName(const InstallStatus status) {
    return status == InstallStatus::allEnabled ? "checkmark.circle.fill" : "exclamationmark.circle.fill";
}

const char* iconMeaning(const InstallStatus status) {
    return status == InstallStatus::allEnabled ? "Ready" : "Attention";
}

const std::string& sentence(const StatusView& view) {
    if (view.installStatus == InstallStatus::allEnabled) return view.activatedText;
    if (view.installStatus == InstallStatus::awaitingAllow) return view.orangeText;
    return view.notActivatedText;
}

const char* statusColor(const InstallStatus status) {
    if (status == InstallStatus::allEnabled) return "#B6B77E";
    return status == InstallStatus::awaitingAllow ? "#EB6E3D" : "#E6C669";
}

} // namespace

View StatusView::body() const {
    return HStack{VerticalAlignment::center,
                  Image::system(iconName(installStatus))
                      .resizable()
                      .frame({.width = 20, .height = 20})
                      .foregroundColor(Color::black)
                      .accessibilityLabel(iconMeaning(installStatus)),
                  Text::verbatim(sentence(*this)).foregroundColor(Color::black).accessibilityAnnounced(), Spacer{}}
        .frame({.width = infinity, .height = 40})
        .padding(Edge::horizontal)
        .background(hexColor(statusColor(installStatus)))
        .font(Font::callout);
}

} // namespace views
