#include "platform/macos/ImageStore.h"
#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/window/WindowTest.h"

#import <AppKit/AppKit.h>

namespace macos_tests {
namespace {

using platform::ui::ImageReference;

/// The pixels of an image, as they were read; nothing where there are none.
std::string pixelsOf(NSImage* const image) {
    for (NSImageRep* candidate in [image representations]) {
        if (![candidate isKindOfClass:[NSBitmapImageRep class]]) continue;
        NSBitmapImageRep* const bitmap = static_cast<NSBitmapImageRep*>(candidate);
        const NSInteger length = [bitmap bytesPerRow] * [bitmap pixelsHigh];
        return {reinterpret_cast<const char*>([bitmap bitmapData]), static_cast<std::size_t>(length)};
    }
    return {};
}

class TheItemsOfAMenu : public WindowTest {
protected:
    /// The images of what the camera's menu offers.
    static std::vector<std::string> imagesOfItems(Desk& desk) {
        std::vector<std::string> images;
        desk.pointAt(desk.middleOf("Camera Driver actions"));
        desk.meanwhile({desk.onceMenuIsOpen([&] {
            for (NSMenuItem* item in [static_cast<NSMenu*>(standin::openMenu()) itemArray])
                if ([[item title] length] > 0) images.push_back(pixelsOf([item image]));
            desk.releaseButton();
        })});
        desk.pressButton();
        EXPECT_TRUE(desk.until([&] { return desk.meanwhileIsOver(); }));
        return images;
    }
};

TEST_F(TheItemsOfAMenu, HaveTheirSymbols) {
    run([](Desk& desk) {
        const platform::ImageStore images{IMAGES};
        const auto symbol = [&](const char* name) {
            return pixelsOf(static_cast<NSImage*>(images.image({name, ImageReference::Source::system})));
        };
        ASSERT_NE(symbol("trash"), "");
        ASSERT_NE(symbol("trash"), symbol("arrow.clockwise.circle"));
        EXPECT_TRUE(imagesOfItems(desk) == (std::vector{symbol("arrow.clockwise.circle"), symbol("trash")}));
    });
}

} // namespace
} // namespace macos_tests
