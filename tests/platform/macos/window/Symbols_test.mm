#include "platform/macos/ImageStore.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <cmath>

namespace platform {
namespace {

constexpr double scale = 4;
constexpr int points = 20;
constexpr int pixels = static_cast<int>(points * scale);
const ui::ImageReference trash{"trash", ui::ImageReference::Source::system};

/// The darkness of each pixel of `points` by `points` points of white, `scale` pixels a point, with a drawing on them.
template <typename Draw>
std::vector<double> drawn(const Draw& draw) {
    NSImage* const canvas = [[[NSImage alloc] initWithSize:NSMakeSize(pixels, pixels)] autorelease];
    [canvas lockFocus];
    [[NSColor whiteColor] set];
    NSRectFill(NSMakeRect(0, 0, pixels, pixels));
    [NSGraphicsContext saveGraphicsState];
    NSAffineTransform* const larger = [NSAffineTransform transform];
    [larger scaleBy:scale];
    [larger concat];
    draw();
    [NSGraphicsContext restoreGraphicsState];
    NSBitmapImageRep* const seen =
        [[[NSBitmapImageRep alloc] initWithFocusedViewRect:NSMakeRect(0, 0, pixels, pixels)] autorelease];
    [canvas unlockFocus];
    std::vector<double> darkness;
    for (int y = 0; y < pixels; ++y)
        for (int x = 0; x < pixels; ++x)
            darkness.push_back(1 - [[seen colorAtX:x y:y] redComponent]);
    return darkness;
}

double sum(const std::vector<double>& values) {
    double total = 0;
    for (const double value : values)
        total += value;
    return total;
}

/// The share of what `a` has that `b` has otherwise.
double difference(const std::vector<double>& a, const std::vector<double>& b) {
    double total = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        total += std::abs(a[i] - b[i]);
    return total / sum(a);
}

TEST(ASymbol, IsAsSharpInAColourAsItIsByItself) {
    @autoreleasepool {
        [NSApplication sharedApplication];
        const ImageStore images{IMAGES};
        const auto byItself = drawn([&] {
            [static_cast<NSImage*>(images.image(trash)) drawInRect:NSMakeRect(0, 0, points, points)
                                                          fromRect:NSZeroRect
                                                         operation:NSCompositingOperationSourceOver
                                                          fraction:1
                                                    respectFlipped:YES
                                                             hints:nil];
        });
        const auto inBlack = drawn([&] { images.draw(trash, {0, 0, points, points}, ui::Color::black, scale); });
        ASSERT_GT(sum(byItself), 100);
        EXPECT_LT(difference(byItself, inBlack), 0.05);
    }
}

} // namespace
} // namespace platform
