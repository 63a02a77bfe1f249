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
    switch (view.installStatus) {
    case InstallStatus::allEnabled:
        return view.activatedText;
    case InstallStatus::awaitingAllow:
        return view.orangeText;
    case InstallStatus::nothingInstalled:
        break;
    }
    return view.notActivatedText;
}

const char* statusColor(const InstallStatus status) {
    switch (status) {
    case InstallStatus::allEnabled:
        return "#B6B77E";
    case InstallStatus::awaitingAllow:
        return "#EB6E3D";
    case InstallStatus::nothingInstalled:
        break;
    }
    return "#E6C669";
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
