// error: use of undeclared identifier 'NSAppearanceNameDarkAqua'
#import <AppKit/AppKit.h>

NSAppearance* refused() {
    return [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
}
