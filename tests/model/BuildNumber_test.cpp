#include "model/BuildNumber.h"

#include "platform/Bundle.h"
#include "tests/support/FakeServices.h"

#include <csignal>
#include <string>
#include <utility>

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

class ABrokenBundleDeathTest : public TheBuildNumber {
protected:
    /// Expects an abort with only this line on standard error.
    static void expectStop(const std::string& reason) {
        EXPECT_EXIT(buildNumber(NSBundle::mainBundle()), testing::KilledBySignal(SIGABRT),
                    testing::Eq("Fatal error: Fake.app/Contents/Info.plist: " + reason + "\n"));
    }
};

TEST_F(ABrokenBundleDeathTest, StopsWithoutADictionaryForTheReasonThatThePlatformGives) {
    platform::fake::setMainBundleWithoutDictionary("cannot be opened");
    expectStop("cannot be opened");
}

TEST_F(ABrokenBundleDeathTest, StopsForABundleVersionThatIsMissingNotTextOrNotAnInteger) {
    const std::pair<InfoDictionary, std::string> dictionaries[]{
        {{{"CFBundleShortVersionString", "2.1"}, {"cfbundleversion", "1"}}, "missing"},
        {{{"CFBundleVersion", std::nullopt}}, "not a text"},
        {{{"CFBundleVersion", "1.0"}}, "not a decimal integer of at most 64 bits"},
    };
    for (const auto& [dictionary, problem] : dictionaries) {
        platform::fake::setMainBundle(dictionary);
        expectStop("CFBundleVersion is " + problem);
    }
}

} // namespace
} // namespace model
