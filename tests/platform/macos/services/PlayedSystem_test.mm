#include "platform/Log.h"

#include "tests/macos/gnustep/StandIns.h"
#include "tests/platform/macos/services/BundleOnDisk.h"

#include <gmock/gmock.h>

namespace platform {
namespace {

using testing::ElementsAre;

TEST(TheLog, IsWrittenForEveryoneToRead) {
    standin::loggedLines().clear();
    log("Sysex identifier %@", {std::string_view{"com.kelvra.ip-camera.cmio"}});
    EXPECT_THAT(standin::loggedLines(), ElementsAre("Sysex identifier com.kelvra.ip-camera.cmio"));
}

TEST(TheLog, TakesNoTextForAFormat) {
    standin::loggedLines().clear();
    writeLogLine("%s %d %@ 100 %");
    EXPECT_THAT(standin::loggedLines(), ElementsAre("%s %d %@ 100 %"));
}

using ABundle = BundleOnDisk;

// A Mac may give one a dictionary of its own making.
TEST_F(ABundle, HasNoDictionaryWhereThereIsNoneAndSaysSo) {
    const NSBundle bundle = read("");
    EXPECT_FALSE(bundle.infoDictionary());
    EXPECT_EQ(bundle.infoFile(), path() + "/Contents/Info.plist");
    EXPECT_EQ(bundle.infoProblem(), "it is missing, or no property list");
}

} // namespace
} // namespace platform
