#include "tests/macos/gnustep/StandIns.h"

#import <AppKit/AppKit.h>

#include <map>

namespace {

/// What was set of one object.
struct Attributes {
    NSString* role = nil;
    NSString* label = nil;
    id value = nil;
};

std::map<id, Attributes>& allAttributes() {
    static std::map<id, Attributes> attributes;
    return attributes;
}

Attributes& attributesOf(const id object) {
    return allAttributes()[object];
}

template <typename T>
void replace(T& kept, const T value) {
    [value retain];
    [kept release];
    kept = value;
}

void forget(const id object) {
    const auto found = allAttributes().find(object);
    if (found == allAttributes().end()) return;
    for (const id kept :
         {static_cast<id>(found->second.role), static_cast<id>(found->second.label), found->second.value})
        [kept release];
    allAttributes().erase(found);
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
    if ([self superview]) forget(self);
    [super removeFromSuperview];
}

@end

@implementation NSObject (Accessibility)

- (void)setAccessibilityRole:(NSString*)role {
    replace(attributesOf(self).role, role);
}

- (NSString*)accessibilityRole {
    return attributesOf(self).role;
}

- (void)setAccessibilityLabel:(NSString*)label {
    replace(attributesOf(self).label, label);
}

- (NSString*)accessibilityLabel {
    return attributesOf(self).label;
}

- (void)setAccessibilityValue:(id)value {
    replace(attributesOf(self).value, value);
}

- (id)accessibilityValue {
    return attributesOf(self).value;
}

- (void)setAccessibilityParent:(id)parent {
}

- (NSArray*)accessibilityChildren {
    return nil;
}

- (NSRect)accessibilityFrame {
    return NSZeroRect;
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
