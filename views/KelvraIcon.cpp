#include "views/KelvraIcon.h"

#include "platform/ui/Image.h"
#include "platform/ui/Shape.h"

namespace views {

using namespace platform::ui;

View KelvraIcon::body() const {
    return dark ? KelvraIconDark{iconName}.body() : KelvraIconDefault{iconName}.body();
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
