#pragma once

#include "platform/Bundle.h"
#include "tests/support/FakeSystemExtensions.h"

#include <cstddef>
#include <string>
#include <vector>

// The services of the platform as a test says. The extension service has a header of its own.

namespace platform::fake {

/// Runs what the main queue holds, in order, together with what that work adds, until the queue is empty. Returns how
/// many pieces of work ran. Work runs in this call alone.
std::size_t drainMainQueue();

/// Makes `bundle` the main bundle. References to the one before stay valid and see this one.
void setMainBundle(NSBundle bundle);
/// A main bundle of this dictionary, whose images lie in `resourcePath`.
void setMainBundle(InfoDictionary dictionary, std::string resourcePath = {});
/// A main bundle without a dictionary, for the reason `problem`.
void setMainBundleWithoutDictionary(std::string problem);

/// What went to the log since the last reset, oldest first.
const std::vector<std::string>& loggedLines();
void resetLog();
/// What went to standard output since the last reset, oldest first, without the line feeds.
const std::vector<std::string>& printedLines();

/// Puts every fake service back to how a test finds it, when it is made and when it goes: nothing waits, was submitted,
/// logged or printed, and the main bundle has no images and the text 2105 for "CFBundleVersion". Hold one in the
/// fixture.
class FreshServices {
public:
    FreshServices() { reset(); }
    FreshServices(const FreshServices&) = delete;
    FreshServices& operator=(const FreshServices&) = delete;
    ~FreshServices() { reset(); }

private:
    static void reset();
};

} // namespace platform::fake
