#include "views/CardView.h"

#include "platform/ui/Elements.h"
#include "views/KelvraButton.h"
#include "views/KelvraIcon.h"

namespace views {

using namespace platform::ui;

View CardView::body() const {
    return HStack{VerticalAlignment::center, row()}
        .frame({.maxWidth = infinity, .maxHeight = 60})
        .background(Color::white);
}

View CardView::row() const {
    return HStack{VerticalAlignment::center, icon(), textBlock(), Spacer{}, actionSlot(), menu()}
        .padding(Edge::vertical, 5)
        .padding(Edge::horizontal, 24)
        .frame({.maxWidth = infinity});
}

View CardView::icon() const {
    return View{KelvraIcon{sei.iconName, sei.enabled}}
        .accessibilityLabel(sei.driverName + (sei.enabled ? ", enabled" : ", not enabled"))
        .padding(Edge::trailing, 8);
}

View CardView::textBlock() const {
    return VStack{HorizontalAlignment::center,
                  Text::verbatim(sei.driverName)
                      .font(Font::title3)
                      .fontWeight(FontWeight::semibold)
                      .frame({.width = greatestFiniteMagnitude, .alignment = Alignment::leading}),
                  Text::verbatim(sei.state)
                      .fontWeight(FontWeight::semibold)
                      .foregroundColor(Color::gray)
                      .frame({.width = greatestFiniteMagnitude, .alignment = Alignment::leading})}
        .frame({.width = 180, .alignment = Alignment::leading})
        .foregroundColor(Color::black);
}

View CardView::actionSlot() const {
    if (!sei.enabled) return actionButton("Activate");
    return HStack{VerticalAlignment::center, sei.intversion < version ? actionButton("Upgrade") : EmptyView{}};
}

View CardView::actionButton(const char* title) const {
    return Button{title, [activate = activate, id = sei.id] { activate(id); }}
        .buttonStyle(KelvraButton{})
        .accessibilityLabel(std::string{title} + " " + sei.driverName);
}

View CardView::menu() const {
    return Menu{"",
                {Button{Label{"Refresh", "arrow.clockwise.circle"}, enumerate},
                 Button{Label{"Remove", "trash"}, [deactivate = deactivate, id = sei.id] { deactivate(id); }}}}
        .frame({.width = 10})
        .menuStyle(BorderlessButtonMenuStyle{})
        .accessibilityLabel(sei.driverName + " actions");
}

} // namespace views
