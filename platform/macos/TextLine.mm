#include "platform/macos/TextLine.h"

#include "platform/macos/Conversions.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

namespace platform {

namespace {

/// The system cuts a text where it is told that it may.
constexpr double unlimited = 1e6;

NSParagraphStyle* truncating() {
    const Retained<NSMutableParagraphStyle> style{[[NSMutableParagraphStyle alloc] init]};
    [style.get() setLineBreakMode:NSLineBreakByTruncatingTail];
    return [[style.get() retain] autorelease];
}

} // namespace

ui::Size sizeOfText(const std::string& text, const ui::Font font) {
    @autoreleasepool {
        NSDictionary* const attributes = @{NSFontAttributeName : toNSFont(font)};
        const NSSize line = [@" " sizeWithAttributes:attributes];
        if (text.empty()) return {0, line.height};
        const NSSize size = [toNSString(text) sizeWithAttributes:attributes];
        return {size.width, size.height};
    }
}

void drawText(const ui::TextRun& run, const ui::PixelGrid& grid) {
    NSFont* const font = toNSFont(run.font);
    NSDictionary* const attributes = @{
        NSFontAttributeName : font,
        NSForegroundColorAttributeName : toNSColor(run.color),
        NSParagraphStyleAttributeName : truncating()
    };
    const double top = grid.snapped(run.rect.y + [font ascender]) - [font ascender];
    const double width = run.truncated ? run.rect.width : unlimited;
    [toNSString(run.text) drawInRect:NSMakeRect(run.rect.x, top, width, run.rect.height) withAttributes:attributes];
}

} // namespace platform
