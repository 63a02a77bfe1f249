// error: 'activate' is unavailable: macOS 14
#import <AppKit/AppKit.h>

void refused() {
    [NSApp activate];
}
