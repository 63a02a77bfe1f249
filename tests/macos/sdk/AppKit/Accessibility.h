#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

// known
typedef NSString* NSAccessibilityRole;
extern const NSAccessibilityRole NSAccessibilityButtonRole;
extern const NSAccessibilityRole NSAccessibilityImageRole;
extern const NSAccessibilityRole NSAccessibilityMenuButtonRole;
extern const NSAccessibilityRole NSAccessibilityStaticTextRole;

typedef NSString* NSAccessibilityNotificationName;
extern const NSAccessibilityNotificationName NSAccessibilityAnnouncementRequestedNotification;
extern const NSAccessibilityNotificationName NSAccessibilityValueChangedNotification;

typedef NSString* NSAccessibilityNotificationUserInfoKey;
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityAnnouncementKey;
extern const NSAccessibilityNotificationUserInfoKey NSAccessibilityPriorityKey;
enum NSAccessibilityPriorityLevel : NSInteger { NSAccessibilityPriorityHigh = 90 };

NSArray* NSAccessibilityUnignoredChildren(NSArray* originalChildren);
void NSAccessibilityPostNotification(id element, NSAccessibilityNotificationName notification);
void NSAccessibilityPostNotificationWithUserInfo(
    id element, NSAccessibilityNotificationName notification,
    NSDictionary<NSAccessibilityNotificationUserInfoKey, id>* _Nullable userInfo);

@interface NSAccessibilityElement : NSObject
- (NSRect)accessibilityFrame;
- (void)setAccessibilityRole:(nullable NSString*)role;
- (void)setAccessibilityLabel:(nullable NSString*)label;
- (void)setAccessibilityValue:(nullable id)value;
- (void)setAccessibilityParent:(nullable id)parent;
@end

#pragma clang assume_nonnull end
