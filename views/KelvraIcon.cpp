#include "views/KelvraIcon.h"

#include "platform/ui/Elements.h"

namespace views {

using namespace platform::ui;

View KelvraIcon::body() const {
    if (dark) return KelvraIconDark{iconName};
    return KelvraIconDefault{iconName};
}

View KelvraIconDefault::body() const {
    return Image::named(iconName)
        .resizable()
        .frame({.width = 22, .height = 22})
        .padding(9)
        .background(Circle{}.stroke(Color::black, 2).padding(2));
}

View KelvraIconDark::body() const {
    return Image::named(iconName + "Dark")
        .resizable()
        .frame({.width = 22, .height = 22})
        .padding(9)
        .background(Color::black)
        .clipShape(Circle{});
}

} // namespace views
