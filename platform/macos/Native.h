#pragma once

namespace platform {

/// An object of Objective-C as plain C++ hands it on. What it is stands beside each use; a source in Objective-C++
/// casts it back.
using Native = void*;

} // namespace platform
