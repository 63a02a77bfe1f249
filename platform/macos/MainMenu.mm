#include "platform/macos/MainMenu.h"

#include "platform/macos/NativeText.h"
#include "platform/macos/Retained.h"

#import <AppKit/AppKit.h>

#include <vector>

namespace platform {

namespace {

constexpr NSEventModifierFlags command = NSEventModifierFlagCommand;
constexpr NSEventModifierFlags optionCommand = NSEventModifierFlagCommand | NSEventModifierFlagOption;
constexpr NSEventModifierFlags shiftCommand = NSEventModifierFlagCommand | NSEventModifierFlagShift;

/// An item that the first responder or the application answers; one without a title is a line.
struct Entry {
    std::string title;
    SEL action = nullptr;
    const char* key = "";
    NSEventModifierFlags modifiers = command;
};

const Entry line{};
/// What other applications offer to do with what is selected here; the system fills it.
const Entry services{"Services"};

std::vector<Entry> applicationEntries(const std::string& name) {
    return {{"About " + name, @selector(orderFrontStandardAboutPanel:)},
            line,
            services,
            line,
            {"Hide " + name, @selector(hide:), "h"},
            {"Hide Others", @selector(hideOtherApplications:), "h", optionCommand},
            {"Show All", @selector(unhideAllApplications:)},
            line,
            {"Quit " + name, @selector(terminate:), "q"}};
}

/// What edits text declares neither undo: nor redo:.
std::vector<Entry> editEntries() {
    return {{"Undo", NSSelectorFromString(@"undo:"), "z"},
            {"Redo", NSSelectorFromString(@"redo:"), "z", shiftCommand},
            line,
            {"Cut", @selector(cut:), "x"},
            {"Copy", @selector(copy:), "c"},
            {"Paste", @selector(paste:), "v"},
            {"Delete", @selector(delete:)},
            {"Select All", @selector(selectAll:), "a"}};
}

std::vector<Entry> windowEntries() {
    return {{"Close", @selector(performClose:), "w"},
            {"Minimize", @selector(performMiniaturize:), "m"},
            {"Zoom", @selector(performZoom:)},
            line,
            {"Bring All to Front", @selector(arrangeInFront:)}};
}

Retained<NSMenu> menuOf(const std::string& title, const std::vector<Entry>& entries) {
    Retained<NSMenu> menu{[[NSMenu alloc] initWithTitle:toNSString(title)]};
    for (const Entry& entry : entries) {
        if (entry.title.empty()) {
            [menu.get() addItem:[NSMenuItem separatorItem]];
            continue;
        }
        NSMenuItem* const item = [menu.get() addItemWithTitle:toNSString(entry.title)
                                                       action:entry.action
                                                keyEquivalent:toNSString(entry.key)];
        [item setKeyEquivalentModifierMask:entry.modifiers];
    }
    return menu;
}

NSMenu* addMenu(NSMenu* const bar, const std::string& title, const std::vector<Entry>& entries) {
    const auto menu = menuOf(title, entries);
    NSMenuItem* const item = [bar addItemWithTitle:toNSString(title) action:nullptr keyEquivalent:@""];
    [bar setSubmenu:menu.get() forItem:item];
    return menu.get();
}

void addServices(NSMenu* const application) {
    NSString* const title = toNSString(services.title);
    const Retained<NSMenu> menu{[[NSMenu alloc] initWithTitle:title]};
    [application setSubmenu:menu.get() forItem:[application itemWithTitle:title]];
    [NSApp setServicesMenu:menu.get()];
}

} // namespace

void installMainMenu(const std::string& applicationName) {
    @autoreleasepool {
        const Retained<NSMenu> bar{[[NSMenu alloc] initWithTitle:toNSString(applicationName)]};
        addServices(addMenu(bar.get(), applicationName, applicationEntries(applicationName)));
        addMenu(bar.get(), "Edit", editEntries());
        NSMenu* const window = addMenu(bar.get(), "Window", windowEntries());
        [NSApp setMainMenu:bar.get()];
        [NSApp setWindowsMenu:window];
    }
}

} // namespace platform
