#pragma once

// What the application uses of the system's AppKit, and nothing else. Lines under "known" are from common knowledge of
// the system; the others were looked up. What is newer than the oldest system that the application runs on is there to
// be refused.

#import <Foundation/Foundation.h>

#import <AppKit/Accessibility.h>
#import <AppKit/Application.h>
#import <AppKit/Controls.h>
#import <AppKit/Drawing.h>
