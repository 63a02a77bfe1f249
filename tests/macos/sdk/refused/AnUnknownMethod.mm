// error: instance method '-setToolbar' not found
#import <AppKit/AppKit.h>

void refused(NSWindow* window) {
    [window setToolbar];
}
