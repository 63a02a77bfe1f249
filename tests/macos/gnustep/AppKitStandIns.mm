#import <AppKit/AppKit.h>

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

- (NSRect)focusRingMaskBounds {
    return NSZeroRect;
}

- (void)drawFocusRingMask {
}

- (void)noteFocusRingMaskChanged {
}

@end
