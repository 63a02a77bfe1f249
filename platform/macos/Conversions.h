#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#import <AppKit/AppKit.h>

// Values of the toolkit as the system has them, for sources in Objective-C++. Objects are returned autoreleased.

namespace platform {

/// A color of the sRGB space. Components outside 0 to 1 become the nearest that can be shown.
NSColor* toNSColor(const ui::Color& color);
/// The system's font of that text style.
NSFont* toNSFont(ui::Font font);

inline NSRect toNSRect(const ui::Rect& rect) {
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

inline NSSize toNSSize(const ui::Size& size) {
    return NSMakeSize(size.width, size.height);
}

} // namespace platform
