#pragma once

#import <AppKit/Controls.h>

#pragma clang assume_nonnull begin

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
@property (nullable, readonly, strong) NSEvent* currentEvent;
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
@property (readonly) NSRect contentLayoutRect;
@property (readonly) CGFloat backingScaleFactor;
@property (nullable, assign) NSView* initialFirstResponder;
@property (nullable, readonly, assign) NSResponder* firstResponder;
- (BOOL)makeFirstResponder:(nullable NSResponder*)responder;
- (NSRect)convertRectToScreen:(NSRect)rect;
@end

#pragma clang assume_nonnull end
