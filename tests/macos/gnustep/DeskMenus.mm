#include "platform/macos/NativeText.h"
#include "tests/macos/gnustep/Desk.h"
#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>

// What a person sees of the menus.

namespace macos_tests {

namespace {

NSMenu* openMenu() {
    return static_cast<NSMenu*>(standin::openMenu());
}

/// " shift-command-z"; nothing for an item without a key.
std::string keyOf(NSMenuItem* const item) {
    if ([[item keyEquivalent] length] == 0) return {};
    const NSUInteger modifiers = [item keyEquivalentModifierMask];
    std::string key = " ";
    if (modifiers & NSShiftKeyMask) key += "shift-";
    if (modifiers & NSAlternateKeyMask) key += "option-";
    if (modifiers & NSCommandKeyMask) key += "command-";
    return key + platform::textOf([item keyEquivalent]);
}

/// " undo:"; nothing for an item that opens a menu.
std::string actionOf(NSMenuItem* const item) {
    return [item submenu] ? "" : ' ' + platform::textOf(NSStringFromSelector([item action]));
}

} // namespace

std::vector<std::string> Desk::mainMenu() const {
    std::vector<std::string> items;
    for (NSMenuItem* menu in [[NSApp mainMenu] itemArray])
        for (NSMenuItem* item in [[menu submenu] itemArray])
            items.push_back(
                platform::textOf([menu title]) + ": " +
                ([item isSeparatorItem] ? "-" : platform::textOf([item title]) + keyOf(item) + actionOf(item)));
    return items;
}

bool Desk::offersServices() const {
    NSMenu* const application = [[[NSApp mainMenu] itemAtIndex:0] submenu];
    NSMenu* const services = [[application itemWithTitle:@"Services"] submenu];
    return services && services == [NSApp servicesMenu];
}

std::vector<std::string> Desk::menuItems() const {
    std::vector<std::string> titles;
    for (NSMenuItem* item in [openMenu() itemArray])
        if ([[item title] length] > 0) titles.push_back(platform::textOf([item title]));
    return titles;
}

std::string Desk::highlightedItem() const {
    const NSInteger index = [[openMenu() menuRepresentation] highlightedItemIndex];
    return index < 0 ? "" : platform::textOf([[openMenu() itemAtIndex:index] title]);
}

} // namespace macos_tests
