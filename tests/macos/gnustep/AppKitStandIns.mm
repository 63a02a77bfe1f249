#include "platform/macos/Retained.h"
#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>

#include <cmath>
#include <map>

namespace {

/// What was set of one object.
struct Attributes {
    platform::Retained<NSString> role;
    platform::Retained<NSString> label;
    platform::Retained<NSObject> value;
    id parent;
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

- (NSRect)accessibilityFrame {
    return [[self window] convertRectToScreen:[self convertRect:[self bounds] toView:nil]];
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
    attributes()[self].parent = parent;
}

- (id)accessibilityParent {
    return attributes()[self].parent;
}

@end

// A control is nothing to assistive technology: its cell is the button. Neither is any other view.
id NSAccessibilityUnignoredDescendant(id element) {
    return [element isKindOfClass:[NSControl class]] ? [element cell] : element;
}

NSArray* NSAccessibilityUnignoredChildren(NSArray* children) {
    NSMutableArray* const unignored = [NSMutableArray array];
    for (id child in children)
        [unignored addObject:NSAccessibilityUnignoredDescendant(child)];
    return unignored;
}

id NSAccessibilityUnignoredAncestor(id element) {
    return [element isKindOfClass:[NSView class]] ? [element window] : element;
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

@implementation NSColorSpace (Standard)

+ (NSColorSpace*)sRGBColorSpace {
    return [NSColorSpace deviceRGBColorSpace];
}

@end

// A block that nobody keeps needs no more of its runtime than names.
extern "C" { // NOLINTBEGIN(bugprone-reserved-identifier): the compiler chose them
void* _NSConcreteStackBlock[32];
void _Block_object_assign(void*, const void*, int) {
}
void _Block_object_dispose(const void*, int) {
}
} // NOLINTEND(bugprone-reserved-identifier)

@implementation NSImage (Symbols)

+ (NSImage*)imageWithSize:(NSSize)size flipped:(BOOL)flipped drawingHandler:(BOOL (^)(NSRect destination))draw {
    const NSSize pixel = [[GSCurrentContext() GSCurrentCTM] transformSize:NSMakeSize(1, 1)];
    const NSSize pixels = NSMakeSize(size.width * std::abs(pixel.width), size.height * std::abs(pixel.height));
    NSImage* const image = [[[NSImage alloc] initWithSize:pixels] autorelease];
    [image lockFocus];
    draw(NSMakeRect(0, 0, pixels.width, pixels.height));
    [image unlockFocus];
    return image;
}

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

#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"

@implementation NSView (Cache)

// GNUstep draws nothing of a window that is not on the screen.
- (void)cacheDisplayInRect:(NSRect)rect toBitmapImageRep:(NSBitmapImageRep*)bitmap {
    NSImage* const image = [[[NSImage alloc] initWithSize:rect.size] autorelease];
    NSAffineTransform* const toImage = [NSAffineTransform transform];
    [toImage translateXBy:-NSMinX(rect) yBy:NSMaxY(rect)];
    [toImage scaleXBy:1 yBy:-1];
    [image lockFocus];
    [toImage concat];
    [self drawRect:rect];
    NSBitmapImageRep* const seen = [[[NSBitmapImageRep alloc] initWithFocusedViewRect:rect] autorelease];
    [image unlockFocus];
    for (NSInteger y = 0; y < [bitmap pixelsHigh]; ++y)
        for (NSInteger x = 0; x < [bitmap pixelsWide]; ++x)
            [bitmap setColor:[seen colorAtX:x y:y] atX:x y:y];
}

@end
