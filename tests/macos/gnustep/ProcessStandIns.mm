#include "tests/macos/gnustep/StandIns.h"

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include <gtest/gtest.h>

// What GNUstep does beyond its own process: it starts a program that hands notices on, and it writes what goes wrong.

namespace {

id ownCenter(id, SEL) {
    return [NSNotificationCenter defaultCenter];
}

void fail(NSString* const message) {
    ADD_FAILURE() << "GNUstep: " << [message UTF8String];
}

} // namespace

namespace standin {

void keepToOneself() {
    const Method method = class_getClassMethod([NSDistributedNotificationCenter class], @selector(defaultCenter));
    method_setImplementation(method, reinterpret_cast<IMP>(ownCenter));
}

void failOnComplaints() {
    _NSLog_printf_handler = fail;
}

} // namespace standin
