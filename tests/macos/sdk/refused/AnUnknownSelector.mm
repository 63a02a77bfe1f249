// error: undeclared selector 'pressed:'
#import <AppKit/AppKit.h>

void refused(NSButton* button) {
    [button setAction:@selector(pressed:)];
}
