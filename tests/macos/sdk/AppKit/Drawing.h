#pragma once

#import <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

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
- (instancetype)initWithSize:(NSSize)size;
- (nullable instancetype)initWithContentsOfFile:(NSString*)path;
@property NSSize size;
- (void)drawInRect:(NSRect)destination
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)alpha
    respectFlipped:(BOOL)flipped
             hints:(nullable NSDictionary<NSString*, id>*)hints;
// known
- (void)lockFocus;
- (void)unlockFocus;
@end

typedef NSString* NSAppearanceName;
extern const NSAppearanceName NSAppearanceNameAqua;

@interface NSAppearance : NSObject
+ (nullable NSAppearance*)appearanceNamed:(NSAppearanceName)name;
@end

#pragma clang assume_nonnull end
