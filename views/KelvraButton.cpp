#include "views/KelvraButton.h"

namespace views {

using namespace platform::ui;

View KelvraButton::makeBody(const ButtonStyleConfiguration& configuration) const {
    return configuration.label.padding(Edge::horizontal, 18)
        .padding(Edge::vertical, 7)
        .background(Color::black)
        .foregroundColor(Color::white)
        .clipShape(Capsule{})
        .font(Font::body);
}

} // namespace views
