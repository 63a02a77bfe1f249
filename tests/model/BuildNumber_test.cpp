#include "model/BuildNumber.h"

#include "platform/Bundle.h"
#include "tests/support/FakeServices.h"

#include <csignal>
#include <string>

namespace model {
namespace {

using platform::InfoDictionary;
using platform::NSBundle;

class TheBuildNumber : public testing::Test {
    platform::fake::FreshServices services_;
};

TEST_F(TheBuildNumber, IsTheIntegerOfTheBundleVersionInEachRead) {
    EXPECT_EQ(buildNumber(NSBundle::mainBundle()), 2105);
    EXPECT_EQ(buildNumber(NSBundle::mainBundle()), 2105);
}

TEST_F(TheBuildNumber, IsComputedAnewInEachRead) {
    const NSBundle& bundle = NSBundle::mainBundle();
    platform::fake::setMainBundle({{"CFBundleVersion", "1"}});
    EXPECT_EQ(buildNumber(bundle), 1);
    platform::fake::setMainBundle({{"CFBundleVersion", "2"}});
    EXPECT_EQ(buildNumber(bundle), 2);
}

TEST_F(TheBuildNumber, IsOfTheBundleThatIsAsked) {
    const NSBundle other{"Other.app/Contents/Info.plist",
                         std::make_shared<const InfoDictionary>(InfoDictionary{{"CFBundleVersion", "7"}}),
                         {},
                         {}};
    EXPECT_EQ(buildNumber(other), 7);
}

class ABrokenBundleDeathTest : public testing::Test {
protected:
    /// The stop is an abort with this one line and nothing else on standard error.
    static void expectStop(const std::string& reason) {
        EXPECT_EXIT(buildNumber(NSBundle::mainBundle()), testing::KilledBySignal(SIGABRT),
                    testing::Eq("Fatal error: Fake.app/Contents/Info.plist: " + reason + "\n"));
    }

private:
    platform::fake::FreshServices services_;
};

TEST_F(ABrokenBundleDeathTest, StopsWithoutADictionaryForTheReasonThatThePlatformGives) {
    platform::fake::setMainBundleWithoutDictionary("cannot be opened");
    expectStop("cannot be opened");
}

TEST_F(ABrokenBundleDeathTest, StopsWithoutABundleVersionRatherThanYieldZero) {
    platform::fake::setMainBundle({{"CFBundleShortVersionString", "2.1"}, {"cfbundleversion", "1"}});
    expectStop("CFBundleVersion is missing");
}

TEST_F(ABrokenBundleDeathTest, StopsForABundleVersionThatIsNoText) {
    platform::fake::setMainBundle({{"CFBundleVersion", std::nullopt}});
    expectStop("CFBundleVersion is not a text");
}

TEST_F(ABrokenBundleDeathTest, StopsForABundleVersionThatIsNoInteger) {
    platform::fake::setMainBundle({{"CFBundleVersion", "1.0"}});
    expectStop("CFBundleVersion is not a decimal integer of at most 64 bits");
}

} // namespace
} // namespace model
