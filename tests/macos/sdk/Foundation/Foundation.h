#pragma once

// What the application uses of the system's Foundation, and nothing else. Lines under "known" are from common
// knowledge of the system; the others were looked up.

// known
typedef signed char BOOL;
#define YES static_cast<BOOL>(1)
#define NO static_cast<BOOL>(0)
#define nil nullptr
typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef unsigned short unichar;
typedef unsigned int UTF32Char;
typedef double CGFloat;

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
NSPoint NSMakePoint(CGFloat x, CGFloat y);
NSSize NSMakeSize(CGFloat width, CGFloat height);
NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height);
BOOL NSPointInRect(NSPoint point, NSRect rect);
extern const NSRect NSZeroRect;

// A part of a text, in UTF-16 units.
struct NSRange {
    NSUInteger location;
    NSUInteger length;
};
NSRange NSMakeRange(NSUInteger location, NSUInteger length);
NSUInteger NSMaxRange(NSRange range);

#pragma clang assume_nonnull begin

@class NSArray<Member>;
@class NSString;

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)isEqual:(nullable id)object;
- (instancetype)retain;
- (oneway void)release;
- (instancetype)autorelease;
- (nullable NSString*)description;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
- (instancetype)init;
- (void)dealloc;
+ (Class)class;
- (void)performSelectorOnMainThread:(SEL)selector
                         withObject:(nullable id)object
                      waitUntilDone:(BOOL)wait
                              modes:(nullable NSArray<NSString*>*)modes;
@end

// What the compiler makes of a loop over a collection.
struct NSFastEnumerationState {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
};

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)count;
@end

@interface NSString : NSObject
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
@property (readonly) NSUInteger length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (void)getCharacters:(unichar*)buffer range:(NSRange)range;
- (NSRange)rangeOfComposedCharacterSequenceAtIndex:(NSUInteger)index;
@end

SEL NSSelectorFromString(NSString* name);

@interface NSNumber : NSObject
+ (NSNumber*)numberWithInteger:(NSInteger)value;
@property (readonly, copy) NSString* stringValue;
@end

@interface NSArray<Member> : NSObject <NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const Member _Nonnull[_Nonnull])objects count:(NSUInteger)count;
@end

@interface NSMutableArray<Member> : NSArray <Member>
- (void)addObject:(Member)object;
@end

// A key of a dictionary can be copied.
@protocol NSCopying
@end

@interface NSString () <NSCopying>
@end

@interface NSDictionary<Key, Value> : NSObject <NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const Value _Nonnull[_Nonnull])objects
                              forKeys:(const id<NSCopying> _Nonnull[_Nonnull])keys
                                count:(NSUInteger)count;
@property (readonly) NSUInteger count;
- (nullable Value)objectForKey:(Key)key;
@end

@interface NSCharacterSet : NSObject
@property (readonly, class, copy) NSCharacterSet* alphanumericCharacterSet;
- (BOOL)longCharacterIsMember:(UTF32Char)character;
@end

@interface NSAffineTransform : NSObject
+ (NSAffineTransform*)transform;
- (void)translateXBy:(CGFloat)x yBy:(CGFloat)y;
@end

@interface NSNotification : NSObject
@end

// Modes in which work for the main thread is taken.
typedef NSString* NSRunLoopMode;
extern const NSRunLoopMode NSDefaultRunLoopMode;
extern const NSRunLoopMode NSRunLoopCommonModes;

typedef NSString* NSErrorDomain;
@interface NSError : NSObject
@property (readonly, copy) NSErrorDomain domain;
@property (readonly) NSInteger code;
@property (readonly, copy) NSString* localizedDescription;
@end

@interface NSBundle : NSObject
@property (nullable, readonly, copy) NSString* resourcePath;
// looked up
@property (class, readonly, strong) NSBundle* mainBundle;
@property (nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
@property (readonly, copy) NSString* bundlePath;
@end

#pragma clang assume_nonnull end
