#include "platform/macos/Retained.h"
#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>

#include <map>

namespace {

/// What was set of one object.
struct Attributes {
    platform::Retained<NSString> role;
    platform::Retained<NSString> label;
    platform::Retained<NSObject> value;
};

std::map<id, Attributes>& attributes() {
    static std::map<id, Attributes> ofEach;
    return ofEach;
}

} // namespace

namespace standin {

std::vector<std::string>& announcements() {
    static std::vector<std::string> spoken;
    return spoken;
}

} // namespace standin

@implementation NSControl (Accessibility)

// What is no more on a canvas is told to nobody. GNUstep asks this of a new view as well.
- (void)removeFromSuperview {
    if ([self superview]) attributes().erase(self);
    [super removeFromSuperview];
}

@end

@implementation NSObject (Accessibility)

- (void)setAccessibilityRole:(NSString*)role {
    attributes()[self].role = platform::retain(role);
}

- (NSString*)accessibilityRole {
    return attributes()[self].role.get();
}

- (void)setAccessibilityLabel:(NSString*)label {
    attributes()[self].label = platform::retain(label);
}

- (NSString*)accessibilityLabel {
    return attributes()[self].label.get();
}

- (void)setAccessibilityValue:(id)value {
    attributes()[self].value = platform::retain<NSObject>(value);
}

- (id)accessibilityValue {
    return attributes()[self].value.get();
}

- (void)setAccessibilityParent:(id)parent {
}

@end

// A control is nothing to assistive technology: its cell is the button.
NSArray* NSAccessibilityUnignoredChildren(NSArray* children) {
    NSMutableArray* const unignored = [NSMutableArray array];
    for (id child in children)
        [unignored addObject:[child isKindOfClass:[NSControl class]] ? [child cell] : child];
    return unignored;
}

void NSAccessibilityPostNotification(id, NSString*) {
}

void NSAccessibilityPostNotificationWithUserInfo(id, NSString* notification, NSDictionary* info) {
    if (![notification isEqual:NSAccessibilityAnnouncementRequestedNotification]) return;
    standin::announcements().emplace_back([[info objectForKey:NSAccessibilityAnnouncementKey] UTF8String]);
}

NSFontTextStyle const NSFontTextStyleBody = @"body";
NSFontTextStyle const NSFontTextStyleCallout = @"callout";
NSFontTextStyle const NSFontTextStyleTitle3 = @"title3";

@implementation NSFont (TextStyles)

+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options {
    const CGFloat size = [style isEqual:NSFontTextStyleTitle3] ? 15 : [style isEqual:NSFontTextStyleCallout] ? 12 : 13;
    return [NSFont fontWithName:@"Inter-Regular" size:size];
}

+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
    return [NSFont fontWithName:weight < NSFontWeightSemibold ? @"Inter-Regular" : @"Inter-SemiBold" size:size];
}

@end

@implementation NSImage (Symbols)

+ (NSImage*)imageWithSystemSymbolName:(NSString*)symbol accessibilityDescription:(NSString*)description {
    NSString* const file = [[NSBundle mainBundle] pathForResource:symbol ofType:@"png"];
    if (!file) return nil;
    NSImage* const image = [[[NSImage alloc] initWithContentsOfFile:file] autorelease];
    [image setSize:NSMakeSize(16, 16)];
    return image;
}

@end

@implementation NSApplication (ActivationPolicy)

- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    return YES;
}

@end

@implementation NSWindow (Content)

- (NSRect)contentLayoutRect {
    constexpr CGFloat titleBar = 28;
    const NSSize content = [[self contentView] frame].size;
    return NSMakeRect(0, 0, content.width, content.height - titleBar);
}

- (void)setTitlebarAppearsTransparent:(BOOL)transparent {
}

- (void)setRestorable:(BOOL)restorable {
}

- (void)setAppearance:(NSAppearance*)appearance {
}

@end

@implementation NSView (FocusRing)

- (void)noteFocusRingMaskChanged {
}

@end
