#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <string_view>

// Texts as the system has them, for sources in Objective-C++.

namespace platform {

/// An autoreleased string, never nil. Each byte that is no UTF-8 becomes a replacement character.
NSString* toNSString(std::string_view utf8);

/// The text of an NSString; of an NSNumber, its value as text. nil and any other object are no text: empty.
std::string textOf(id object);

} // namespace platform
