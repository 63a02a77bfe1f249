#include "platform/Log.h"

#include "tests/platform/macos/services/ServicesTest.h"

#include <os/log.h>

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

TEST(TheLog, HidesATextThatIsNotMarkedPublic) {
    standin::loggedLines().clear();
    os_log(OS_LOG_DEFAULT, "%s", "secret");
    EXPECT_THAT(standin::loggedLines(), ElementsAre("<private>"));
}

} // namespace
} // namespace platform
