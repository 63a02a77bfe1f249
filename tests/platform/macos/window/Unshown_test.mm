#include "platform/macos/AppKitMetrics.h"
#include "platform/macos/ImageStore.h"
#include "platform/macos/MainWindow.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"

#import <AppKit/AppKit.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

constexpr ui::Color orange{1, 0.5, 0, 1};

/// A banner with a menu below it, in a window that nobody sees: also on a Mac, in front of the system itself.
class AnUnshownWindow : public testing::Test {
protected:
    static void SetUpTestSuite() { [NSApplication sharedApplication]; }

    AnUnshownWindow() {
        const ui::View menu = ui::Menu{
            "Menu",
            {ui::Button{ui::Label{"Refresh", "trash"}, [] {}}, ui::Button{ui::Label{"Remove", "trash"}, [] {}}}};
        const ui::View banner = ui::Spacer{}.frame({.width = 450, .height = 40}).background(orange);
        const ui::View screen = ui::VStack{ui::HorizontalAlignment::center, banner, menu, ui::Spacer{}};
        const AppKitMetrics metrics{images_};
        window_.present(ui::layout(screen.frame(ui::FixedFrame{.width = 450, .height = 230}), std::nullopt, metrics,
                                   window_.safeArea()));
    }

    static NSView* canvas() {
        for (NSWindow* window in [[NSApplication sharedApplication] windows])
            if ([[window contentView] isKindOfClass:NSClassFromString(@"KelvraSceneView")]) return [window contentView];
        return nil;
    }

    const ImageStore images_{"/nowhere"};
    MainWindow window_{"Unshown", images_};
};

TEST_F(AnUnshownWindow, HasItsContentBelowATitleBarOfAUsualHeight) {
    const double top = window_.safeArea().top;
    EXPECT_GE(top, 20);
    EXPECT_LE(top, 60);
    EXPECT_EQ([canvas() frame].size.width, 450);
    EXPECT_EQ([canvas() frame].size.height, top + 230);
}

TEST_F(AnUnshownWindow, HasAMenuWithItsItems) {
    std::vector<std::string> titles;
    for (NSView* view in [canvas() subviews])
        if ([view isKindOfClass:[NSPopUpButton class]])
            for (NSMenuItem* item in [static_cast<NSPopUpButton*>(view) itemArray])
                titles.emplace_back([[item title] UTF8String]);
    EXPECT_EQ(titles, (std::vector<std::string>{"", "Refresh", "Remove"}));
}

TEST_F(AnUnshownWindow, HasTheColorOfItsBannerUnderTheTitleBar) {
    @autoreleasepool {
        const NSRect above = NSMakeRect(200, -10, 10, 8);
        NSBitmapImageRep* const seen = [canvas() bitmapImageRepForCachingDisplayInRect:above];
        [canvas() cacheDisplayInRect:above toBitmapImageRep:seen];
        NSColor* const color = [[seen colorAtX:5 y:4] colorUsingColorSpace:[NSColorSpace sRGBColorSpace]];
        EXPECT_NEAR([color redComponent], orange.red, 0.05);
        EXPECT_NEAR([color greenComponent], orange.green, 0.05);
        EXPECT_NEAR([color blueComponent], orange.blue, 0.05);
    }
}

} // namespace
} // namespace platform
