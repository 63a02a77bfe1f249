#pragma once

// What GNUstep's AppKit lacks of what the application uses: newer names of what it has, and declarations of what
// stands in beside this folder.

#include_next <AppKit/AppKit.h>

// The newer names.
#define NSButtonTypeMomentaryChange NSMomentaryChangeButton
#define NSCompositingOperationSourceIn NSCompositeSourceIn
#define NSCompositingOperationSourceOver NSCompositeSourceOver
#define NSEventModifierFlagCommand NSCommandKeyMask
#define NSEventModifierFlagOption NSAlternateKeyMask
#define NSEventModifierFlagShift NSShiftKeyMask
#define NSEventModifierFlags NSUInteger
#define NSEventTypeLeftMouseDown NSLeftMouseDown
#define NSLineCapStyleRound NSRoundLineCapStyle
#define NSLineJoinStyleRound NSRoundLineJoinStyle

typedef NSString* NSFontTextStyle;
extern NSFontTextStyle const NSFontTextStyleBody;
extern NSFontTextStyle const NSFontTextStyleCallout;
extern NSFontTextStyle const NSFontTextStyleTitle3;

@interface NSFont (TextStyles)
/// Inter, in the sizes of the text styles.
+ (NSFont*)preferredFontForTextStyle:(NSFontTextStyle)style options:(NSDictionary*)options;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end

@interface NSColorSpace (Standard)
+ (NSColorSpace*)sRGBColorSpace;
@end

@interface NSImage (Symbols)
/// Drawn at once, with a pixel for each that the current context has.
+ (NSImage*)imageWithSize:(NSSize)size flipped:(BOOL)flipped drawingHandler:(BOOL (^)(NSRect destination))draw;
/// The drawing of that name in the main bundle.
+ (NSImage*)imageWithSystemSymbolName:(NSString*)symbol accessibilityDescription:(NSString*)description;
@end

/// There is no Dock to be in: it changes nothing.
@interface NSApplication (ActivationPolicy)
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy;
@end

@interface NSWindow (Content)
/// What a title bar over the content would leave of it.
@property (readonly) NSRect contentLayoutRect;
- (void)setTitlebarAppearsTransparent:(BOOL)transparent;
- (void)setRestorable:(BOOL)restorable;
- (void)setAppearance:(NSAppearance*)appearance;
@end

/// The ring is not drawn: it changes nothing.
@interface NSView (FocusRing)
- (void)noteFocusRingMaskChanged;
@end

/// Closes the menu that is open, as a click outside of it would.
@interface NSMenu (Tracking)
- (void)cancelTracking;
@end

/// What assistive technology would be told of an object.
@interface NSObject (Accessibility)
- (void)setAccessibilityRole:(NSString*)role;
- (NSString*)accessibilityRole;
- (void)setAccessibilityLabel:(NSString*)label;
- (NSString*)accessibilityLabel;
- (void)setAccessibilityValue:(id)value;
- (id)accessibilityValue;
- (void)setAccessibilityParent:(id)parent;
- (id)accessibilityParent;
@end

/// What the application answers where the system asks.
@interface NSObject (Asked)
- (NSArray*)accessibilityChildren;
- (NSRect)accessibilityFrame;
- (id)accessibilityHitTest:(NSPoint)point;
- (void)drawFocusRingMask;
- (NSRect)focusRingMaskBounds;
@end
