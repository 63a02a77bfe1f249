#include "platform/macos/Conversions.h"

#include <algorithm>

namespace platform {

namespace {

CGFloat component(const double value) {
    return std::clamp(value, 0.0, 1.0);
}

NSFontTextStyle textStyle(const ui::TextStyle style) {
    switch (style) {
    case ui::TextStyle::callout:
        return NSFontTextStyleCallout;
    case ui::TextStyle::title3:
        return NSFontTextStyleTitle3;
    case ui::TextStyle::body:
        break;
    }
    return NSFontTextStyleBody;
}

} // namespace

NSColor* toNSColor(const ui::Color& color) {
    return [NSColor colorWithSRGBRed:component(color.red)
                               green:component(color.green)
                                blue:component(color.blue)
                               alpha:component(color.opacity)];
}

NSFont* toNSFont(const ui::Font font) {
    NSFont* const regular = [NSFont preferredFontForTextStyle:textStyle(font.style) options:@{}];
    if (font.weight == ui::FontWeight::regular) return regular;
    return [NSFont systemFontOfSize:[regular pointSize] weight:NSFontWeightSemibold];
}

} // namespace platform
