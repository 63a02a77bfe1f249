#include "platform/macos/ImageStore.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

#import <AppKit/AppKit.h>

#include <cmath>
#include <filesystem>
#include <numeric>
#include <unistd.h>

namespace macos_tests {
namespace {

namespace ui = platform::ui;

using platform::ImageStore;
using ui::ImageReference;

class TheImages : public testing::Test {
protected:
    TheImages() : folder_{std::filesystem::temp_directory_path() / ("images-" + std::to_string(getpid()))} {
        std::filesystem::create_directories(folder_);
        std::filesystem::copy_file(IMAGES "/trash.png", folder_ / "drawn.only.png");
    }
    ~TheImages() override { std::filesystem::remove_all(folder_); }

    std::filesystem::path folder_;
};

TEST_F(TheImages, HaveTheDrawingOfTheBundleForASymbolThatTheSystemLacks) {
    const ImageStore images{folder_};
    EXPECT_NE(images.image({"drawn.only", ImageReference::Source::system}), nullptr);
}

TEST_F(TheImages, AreNoneWhereThereIsNeitherASymbolNorADrawing) {
    const ImageStore images{folder_};
    EXPECT_EQ(images.image({"nothing", ImageReference::Source::system}), nullptr);
    EXPECT_EQ(images.size({"nothing", ImageReference::Source::system}), ui::Size{});
}

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
    return std::accumulate(values.begin(), values.end(), 0.0);
}

/// The share of what `a` has that `b` has otherwise.
double difference(const std::vector<double>& a, const std::vector<double>& b) {
    double total = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        total += std::abs(a[i] - b[i]);
    return total / sum(a);
}

class ASymbol : public testing::Test {
protected:
    ASymbol() { [NSApplication sharedApplication]; }

    std::vector<double> drawnIn(const ui::Color& color) const {
        return drawn([&] { images_.draw(trash, {0, 0, points, points}, color); });
    }

    const ImageStore images_{IMAGES};
};

TEST_F(ASymbol, IsAsSharpInAColorAsItIsByItself) {
    @autoreleasepool {
        const auto byItself = drawn([&] {
            [static_cast<NSImage*>(images_.image(trash)) drawInRect:NSMakeRect(0, 0, points, points)
                                                           fromRect:NSZeroRect
                                                          operation:NSCompositingOperationSourceOver
                                                           fraction:1
                                                     respectFlipped:YES
                                                              hints:nil];
        });
        ASSERT_GT(sum(byItself), 100);
        EXPECT_LT(difference(byItself, drawnIn(ui::Color::black)), 0.05);
    }
}

TEST_F(ASymbol, HasNoColorButTheOneThatItIsDrawnIn) {
    @autoreleasepool {
        EXPECT_EQ(sum(drawnIn(ui::Color::white)), 0);
    }
}

/// The pixels of an image, as they were read; nothing where there are none.
std::string pixelsOf(NSImage* const image) {
    for (NSImageRep* candidate in [image representations]) {
        if (![candidate isKindOfClass:[NSBitmapImageRep class]]) continue;
        auto* const bitmap = static_cast<NSBitmapImageRep*>(candidate);
        const NSInteger length = [bitmap bytesPerRow] * [bitmap pixelsHigh];
        return {reinterpret_cast<const char*>([bitmap bitmapData]), static_cast<std::size_t>(length)};
    }
    return {};
}

class TheItemsOfAMenu : public WindowTest {};

TEST_F(TheItemsOfAMenu, AreRefreshAndRemoveWithTheirSymbols) {
    run([](Desk& desk) {
        const ImageStore images{IMAGES};
        const auto symbol = [&](const char* name) {
            return pixelsOf(static_cast<NSImage*>(images.image({name, ImageReference::Source::system})));
        };
        ASSERT_NE(symbol("trash"), "");
        std::vector<std::string> titles;
        std::vector<std::string> seen;
        desk.press("Camera Driver actions", {desk.onceMenuIsOpen([&] {
                       titles = desk.menuItems();
                       for (NSMenuItem* item in [static_cast<NSMenu*>(standin::openMenu()) itemArray])
                           if ([[item title] length] > 0) seen.push_back(pixelsOf([item image]));
                       desk.releaseButton();
                   })});
        ASSERT_TRUE(isDone(desk));
        EXPECT_THAT(titles, testing::ElementsAre("Refresh", "Remove"));
        EXPECT_TRUE(seen == (std::vector{symbol("arrow.clockwise.circle"), symbol("trash")}));
    });
}

} // namespace
} // namespace macos_tests
