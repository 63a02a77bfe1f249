#pragma once

// What the application uses of the system's AppKit, and nothing else. Lines under "known" are from common knowledge of
// the system; the others were looked up. What is newer than the oldest system that the application runs on is there to
// be refused.

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

// Drawing -------------------------------------------------------------------------------------------------------------

// Colors, paths and the context that they are drawn into; text; images.

enum NSCompositingOperation : NSUInteger {
    NSCompositingOperationSourceOver = 2,
    NSCompositingOperationSourceIn = 3 // known
};

// known
void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation);
// looked up
void NSRectFill(NSRect rect);

// known
@interface NSColor : NSObject
@property (class, readonly, strong) NSColor* blackColor;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (void)set;
@end

enum NSLineCapStyle : NSUInteger { NSLineCapStyleRound = 1 };
enum NSLineJoinStyle : NSUInteger { NSLineJoinStyleRound = 1 };

@interface NSBezierPath : NSObject
+ (NSBezierPath*)bezierPath;
+ (NSBezierPath*)bezierPathWithRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
+ (NSBezierPath*)bezierPathWithRoundedRect:(NSRect)rect xRadius:(CGFloat)x yRadius:(CGFloat)y;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
@property CGFloat lineWidth;
@property CGFloat miterLimit;
@property NSLineCapStyle lineCapStyle;
@property NSLineJoinStyle lineJoinStyle;
- (void)fill;
- (void)stroke;
- (void)addClip;
@end

@interface NSGraphicsContext : NSObject
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

@interface NSAffineTransform (AppKit)
- (void)concat;
@end

// looked up
typedef NSString* NSFontTextStyle;
extern const NSFontTextStyle NSFontTextStyleTitle3;
extern const NSFontTextStyle NSFontTextStyleBody;
extern const NSFontTextStyle NSFontTextStyleCallout;
typedef CGFloat NSFontWeight;
extern const NSFontWeight NSFontWeightSemibold;
typedef NSString* NSFontTextStyleOptionKey;

@interface NSFont : NSObject
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style
                             options:(NSDictionary<NSFontTextStyleOptionKey, id>*)options;
@property (readonly) CGFloat pointSize;
@property (readonly) CGFloat ascender;
@end

// known
typedef NSString* NSAttributedStringKey;
extern const NSAttributedStringKey NSFontAttributeName;
extern const NSAttributedStringKey NSForegroundColorAttributeName;
extern const NSAttributedStringKey NSParagraphStyleAttributeName;

enum NSLineBreakMode : NSUInteger { NSLineBreakByTruncatingTail = 4 };

@interface NSParagraphStyle : NSObject
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
@property NSLineBreakMode lineBreakMode;
@end

@interface NSString (AppKit)
- (NSSize)sizeWithAttributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
- (void)drawInRect:(NSRect)rect withAttributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes;
@end

// looked up
@interface NSImage : NSObject
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)symbol
                          accessibilityDescription:(nullable NSString*)description;
- (nullable instancetype)initWithContentsOfFile:(NSString*)path;
@property NSSize size;
- (void)drawInRect:(NSRect)destination
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)alpha
    respectFlipped:(BOOL)flipped
             hints:(nullable NSDictionary<NSString*, id>*)hints;
// known
+ (NSImage*)imageWithSize:(NSSize)size flipped:(BOOL)flipped drawingHandler:(BOOL (^)(NSRect destination))draw;
@end

typedef NSString* NSAppearanceName;
extern const NSAppearanceName NSAppearanceNameAqua;

@interface NSAppearance : NSObject
+ (nullable NSAppearance*)appearanceNamed:(NSAppearanceName)name;
@end

// Views and controls --------------------------------------------------------------------------------------------------

@class NSMenu;
@class NSWindow;

// known
enum NSEventType : NSUInteger { NSEventTypeLeftMouseDown = 1 };
typedef NSUInteger NSEventModifierFlags;
enum : NSEventModifierFlags {
    NSEventModifierFlagShift = 1 << 17,
    NSEventModifierFlagOption = 1 << 19,
    NSEventModifierFlagCommand = 1 << 20
};

@interface NSEvent : NSObject
@property (readonly) NSEventType type;
@end

@interface NSResponder : NSObject
@property (readonly) BOOL acceptsFirstResponder;
- (void)mouseDown:(NSEvent*)event;
@end

enum NSFocusRingType : NSUInteger { NSFocusRingTypeNone = 1 };

@interface NSView : NSResponder
- (instancetype)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
@property NSRect frame;
@property NSRect bounds;
@property BOOL needsDisplay;
- (void)drawRect:(NSRect)dirty;
- (void)removeFromSuperview;
- (void)setFrameSize:(NSSize)size;
- (void)setBoundsOrigin:(NSPoint)origin;
@property (nullable, readonly, assign) NSWindow* window;
@property (readonly, getter=isOpaque) BOOL opaque;
@property (readonly) BOOL canBecomeKeyView;
@property (nullable, assign) NSView* nextKeyView;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;
- (nullable NSArray*)accessibilityChildren;
- (nullable id)accessibilityHitTest:(NSPoint)point;
// looked up
@property (getter=isFlipped, readonly) BOOL flipped;
@property NSFocusRingType focusRingType;
- (void)drawFocusRingMask;
@property (readonly) NSRect focusRingMaskBounds;
- (void)noteFocusRingMaskChanged;
- (void)setAccessibilityLabel:(nullable NSString*)label;
- (void)setAccessibilityRole:(nullable NSString*)role;
@end

// known
@interface NSCell : NSObject
@end

@interface NSControl : NSView
@property (nullable, weak) id target;
@property (nullable) SEL action;
// known
@property (nullable, strong) NSCell* cell;
@end

// Buttons and pull-down menus.
enum NSButtonType : NSUInteger { NSButtonTypeMomentaryChange = 5 };

@interface NSButton : NSControl
- (void)setButtonType:(NSButtonType)type;
@property (copy) NSString* title;
@property (getter=isBordered) BOOL bordered;
@property (getter=isTransparent) BOOL transparent;
@end

enum NSPopUpArrowPosition : NSUInteger { NSPopUpNoArrow = 0 };

@interface NSPopUpButtonCell : NSCell
@property NSPopUpArrowPosition arrowPosition;
@end

@interface NSPopUpButton : NSButton
- (instancetype)initWithFrame:(NSRect)frame pullsDown:(BOOL)pullsDown;
@property (nullable, strong) NSMenu* menu;
@property BOOL usesItemFromMenu __attribute__((unavailable("macOS 15")));
@end

@interface NSMenuItem : NSObject
+ (NSMenuItem*)separatorItem;
@property (nullable, weak) id target;
@property (nullable, strong) id representedObject;
// known
@property (nullable, strong) NSImage* image;
@property NSEventModifierFlags keyEquivalentModifierMask;
@end

@protocol NSMenuDelegate;

@interface NSMenu : NSObject
- (instancetype)initWithTitle:(NSString*)title;
@property BOOL autoenablesItems;
- (void)addItem:(NSMenuItem*)item;
- (NSMenuItem*)addItemWithTitle:(NSString*)title action:(nullable SEL)action keyEquivalent:(NSString*)key;
// known
@property (nullable, weak) id<NSMenuDelegate> delegate;
@property (readonly) NSInteger numberOfItems;
- (void)removeItemAtIndex:(NSInteger)index;
- (nullable NSMenuItem*)itemWithTitle:(NSString*)title;
- (void)setSubmenu:(nullable NSMenu*)menu forItem:(NSMenuItem*)item;
- (void)cancelTracking;
@end

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

// Of its actions, those that Edit's items send to whatever has focus.
@interface NSText : NSView
- (void)cut:(nullable id)sender;
- (void)copy:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)delete:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

// The application -----------------------------------------------------------------------------------------------------

enum NSApplicationActivationPolicy : NSInteger { NSApplicationActivationPolicyRegular = 0 };

@protocol NSApplicationDelegate;

@interface NSApplication : NSResponder
+ (NSApplication*)sharedApplication;
@property (nullable, weak) id<NSApplicationDelegate> delegate;
- (void)run;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
- (void)activateIgnoringOtherApps:(BOOL)flag;
- (void)activate __attribute__((unavailable("macOS 14")));
// known
@property (nullable, strong) NSMenu* mainMenu;
@property (nullable, strong) NSMenu* windowsMenu;
@property (nullable, strong) NSMenu* servicesMenu;
- (void)terminate:(nullable id)sender;
- (void)hide:(nullable id)sender;
- (void)unhideAllApplications:(nullable id)sender;
- (void)hideOtherApplications:(nullable id)sender;
- (void)orderFrontStandardAboutPanel:(nullable id)sender;
- (void)arrangeInFront:(nullable id)sender;
@end

// known
extern NSApplication* NSApp;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender;
// known
- (void)applicationDidFinishLaunching:(NSNotification*)notification;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;
@end

typedef NSUInteger NSWindowStyleMask;
enum : NSWindowStyleMask {
    NSWindowStyleMaskTitled = 1 << 0,
    NSWindowStyleMaskClosable = 1 << 1,
    NSWindowStyleMaskMiniaturizable = 1 << 2,
    NSWindowStyleMaskFullSizeContentView = 1 << 15
};

// Where a window keeps what was drawn.
enum NSBackingStoreType : NSUInteger { NSBackingStoreBuffered = 2 };

@interface NSWindow : NSResponder
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)defer;
@property (copy) NSString* title;
@property BOOL titlebarAppearsTransparent;
@property (nullable, strong) NSView* contentView;
@property (getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property (nullable, strong) NSAppearance* appearance;
- (void)setContentSize:(NSSize)size;
// known
- (void)center;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
- (void)performClose:(nullable id)sender;
- (void)performMiniaturize:(nullable id)sender;
- (void)performZoom:(nullable id)sender;
@property (getter=isRestorable) BOOL restorable;
@property BOOL autorecalculatesKeyViewLoop;
@property (readonly) NSRect contentLayoutRect;
@property (readonly) CGFloat backingScaleFactor;
@property (nullable, assign) NSView* initialFirstResponder;
@property (nullable, readonly, assign) NSResponder* firstResponder;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
- (NSRect)convertRectToScreen:(NSRect)rect;
- (void)sendEvent:(NSEvent*)event;
@end

// Accessibility -------------------------------------------------------------------------------------------------------

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
_Nullable id NSAccessibilityUnignoredAncestor(id element);
_Nullable id NSAccessibilityUnignoredDescendant(id element);
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
