#include "tests/macos/gnustep/StandIns.h"

#import <Foundation/Foundation.h>
#import <Foundation/NSDebug.h>
#include <objc/runtime.h>
#include <os/log.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstring>

// What a process says beyond itself, and what is known of it: the log, what goes wrong, and the objects that live.

namespace {

// GNUstep would start a program that hands notices on.
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

std::map<std::string, long> liveObjects() {
    std::map<std::string, long> alive;
    for (Class* type = GSDebugAllocationClassList(); *type; ++type)
        if (const long count = GSDebugAllocationCount(*type); count != 0) alive[class_getName(*type)] = count;
    return alive;
}

std::vector<std::string>& loggedLines() {
    static std::vector<std::string> lines;
    return lines;
}

} // namespace standin

struct os_log_s {};
os_log_s _os_log_default;

// Texts that are not marked public are hidden, as the system does it.
void tests_os_log(os_log_t, const char* format, ...) {
    std::string line;
    va_list arguments;
    va_start(arguments, format);
    for (const char* at = format; *at != '\0'; ++at) {
        if (std::strncmp(at, "%{public}s", 10) == 0) {
            line += va_arg(arguments, const char*);
            at += 9;
        } else if (std::strncmp(at, "%s", 2) == 0) {
            line += "<private>";
            static_cast<void>(va_arg(arguments, const char*));
            at += 1;
        } else {
            line += *at;
        }
    }
    va_end(arguments);
    standin::loggedLines().push_back(line);
}
