#include "platform/macos/AppKitMetrics.h"

#include "platform/macos/ImageStore.h"
#include "platform/macos/TextLine.h"

namespace platform {

ui::Size AppKitMetrics::textSize(const std::string& text, const ui::Font font) const {
    return sizeOfText(text, font);
}

ui::Size AppKitMetrics::imageSize(const ui::ImageReference& image) const {
    return images_.size(image);
}

} // namespace platform
