#include "platform/FatalError.h"

namespace platform {
namespace {

TEST(AFatalError, StopsTheProgramWithOneLine) {
    EXPECT_EXIT(fatalError("/an/Info.plist: CFBundleVersion is missing"), testing::KilledBySignal(SIGABRT),
                "^Fatal error: /an/Info.plist: CFBundleVersion is missing\n$");
}

TEST(AFatalError, IsOneLineEvenIfItsMessageHasSeveral) {
    EXPECT_DEATH(fatalError("a\nb\r\nc"), "^Fatal error: a b  c\n$");
}

} // namespace
} // namespace platform
