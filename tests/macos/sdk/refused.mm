// What would go wrong unseen if the compiler let it pass. Each of these lines has to be refused, for this reason.

#import <AppKit/AppKit.h>
#import <SystemExtensions/SystemExtensions.h>
#include <os/log.h>

@interface DelegateWithoutCallbacks : NSObject <OSSystemExtensionRequestDelegate>
@end

@implementation DelegateWithoutCallbacks // expected-error 1+ {{in protocol 'OSSystemExtensionRequestDelegate'}}
@end

extern const char* line;
void refusedLogLineThatIsNoLiteral() {
    os_log(OS_LOG_DEFAULT, line); // expected-error {{expected ')'}}
}

NSAppearance* refusedUnknownConstant() {
    return [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua]; // expected-error {{undeclared identifier}}
}

void refusedUnknownMethod(NSWindow* window) {
    [window setToolbar]; // expected-error {{instance method '-setToolbar' not found}}
}

id refusedUnknownProperty(NSWindow* window) {
    return window.toolbar; // expected-error {{property 'toolbar' not found}}
}

void refusedUnknownSelector(NSButton* button) {
    [button setAction:@selector(pressed:)]; // expected-error {{undeclared selector 'pressed:'}}
}

SEL refusedSelectorThatNobodyDeclares() {
    return @selector(undo:); // expected-error {{undeclared selector 'undo:'}}
}

id refusedNil() {
    return [OSSystemExtensionRequest activationRequestForExtension:nil // expected-error {{null passed to a callee}}
                                                             queue:dispatch_get_main_queue()];
}

void refusedOnTheOldestSystem() {
    [NSApp activate]; // expected-error {{'activate' is unavailable: macOS 14}}
}

// GCC's library has it; that of the oldest Mac has not.
#include <memory_resource> // expected-error {{'memory_resource' file not found}}
