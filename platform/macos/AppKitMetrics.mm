#include "platform/macos/AppKitMetrics.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/NativeText.h"

namespace platform {

ui::Size AppKitMetrics::textSize(const std::string& text, const ui::Font font) const {
    @autoreleasepool {
        NSDictionary* const attributes = @{NSFontAttributeName : toNSFont(font)};
        const NSSize line = [@" " sizeWithAttributes:attributes];
        if (text.empty()) return {0, line.height};
        const NSSize size = [toNSString(text) sizeWithAttributes:attributes];
        return {size.width, size.height};
    }
}

ui::Size AppKitMetrics::imageSize(const ui::ImageReference& image) const {
    return images_.size(image);
}

} // namespace platform
