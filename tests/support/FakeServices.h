#pragma once

#include "tests/support/FakeBundle.h"
#include "tests/support/FakeDispatchQueue.h"
#include "tests/support/FakeLog.h"
#include "tests/support/FakeOutput.h"
#include "tests/support/FakeSystemExtensions.h"

namespace platform::fake {

/// Puts every fake service back to how a test finds it, when it is made and when it goes. Hold one in the fixture.
class FreshServices {
public:
    FreshServices() { reset(); }
    FreshServices(const FreshServices&) = delete;
    FreshServices& operator=(const FreshServices&) = delete;
    ~FreshServices() { reset(); }

private:
    static void reset() {
        resetMainQueue();
        SystemExtensions::shared().reset();
        resetMainBundle();
        resetLog();
        resetOutput();
    }
};

} // namespace platform::fake
