#pragma once

#import <AppKit/Drawing.h>

#pragma clang assume_nonnull begin

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

// The actions of Edit's items, which whatever has focus answers.
@interface NSResponder (Editing)
- (void)undo:(nullable id)sender;
- (void)redo:(nullable id)sender;
- (void)cut:(nullable id)sender;
- (void)copy:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)delete:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

#pragma clang assume_nonnull end
