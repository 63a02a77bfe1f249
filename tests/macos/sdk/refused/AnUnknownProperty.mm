// error: property 'toolbar' not found
#import <AppKit/AppKit.h>

id refused(NSWindow* window) {
    return window.toolbar;
}
