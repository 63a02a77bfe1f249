#include "platform/macos/ImageStore.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

#include <map>
#include <utility>

namespace platform {

/// By name; nil for what is missing, so that it is looked for once.
struct ImageStore::Loaded {
    std::map<std::string, Retained<NSImage>> assets;
    std::map<std::string, Retained<NSImage>> symbols;
};

namespace {

bool isSymbol(const ui::ImageReference& image) {
    return image.source == ui::ImageReference::Source::system;
}

Retained<NSImage> readAsset(const std::string& folder, const std::string& name) {
    for (const char* const format : {".pdf", ".png"}) {
        NSString* const file = toNSString(folder + "/" + name + format);
        Retained<NSImage> image{[[NSImage alloc] initWithContentsOfFile:file]};
        if (image) return image;
    }
    return {};
}

Retained<NSImage> readSymbol(const std::string& name) {
    return retain([NSImage imageWithSystemSymbolName:toNSString(name) accessibilityDescription:nil]);
}

void drawOver(NSImage* const image, const NSRect rect) {
    [image drawInRect:rect
              fromRect:NSZeroRect
             operation:NSCompositingOperationSourceOver
              fraction:1
        respectFlipped:YES
                 hints:nil];
}

/// The symbol in `color`, drawn anew for the resolution that it is drawn at. Autoreleased.
NSImage* tinted(NSImage* const symbol, const NSSize size, const ui::Color& color) {
    NSColor* const tint = toNSColor(color);
    return [NSImage imageWithSize:size
                          flipped:NO
                   drawingHandler:^BOOL(const NSRect whole) {
                     drawOver(symbol, whole);
                     [tint set];
                     NSRectFillUsingOperation(whole, NSCompositingOperationSourceIn);
                     return YES;
                   }];
}

} // namespace

ImageStore::ImageStore(std::string folder) : folder_{std::move(folder)}, loaded_{std::make_unique<Loaded>()} {
}

ImageStore::~ImageStore() = default;

Native ImageStore::image(const ui::ImageReference& image) const {
    auto& known = isSymbol(image) ? loaded_->symbols : loaded_->assets;
    const auto found = known.find(image.name);
    if (found != known.end()) return found->second.get();
    @autoreleasepool {
        auto read = isSymbol(image) ? readSymbol(image.name) : Retained<NSImage>{};
        if (!read) read = readAsset(folder_, image.name);
        return known.emplace(image.name, std::move(read)).first->second.get();
    }
}

ui::Size ImageStore::size(const ui::ImageReference& image) const {
    auto* const found = static_cast<NSImage*>(this->image(image));
    if (!found) return {};
    return {[found size].width, [found size].height};
}

void ImageStore::draw(const ui::ImageReference& image, const ui::Rect& rect, const ui::Color& color) const {
    auto* const found = static_cast<NSImage*>(this->image(image));
    if (!found || rect.width <= 0 || rect.height <= 0) return;
    const NSRect target = toNSRect(rect);
    drawOver(isSymbol(image) ? tinted(found, target.size, color) : found, target);
}

} // namespace platform
