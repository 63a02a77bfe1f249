#include "simulator/client/Client.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace simulator {
namespace {

constexpr auto note = "QDBusConnection: name 'com.kelvra.Simulator1' had owner ':1.5' but we thought it was ''";

/// What a program prints that is told of a race, and then of something else.
[[noreturn]] void sayBoth() {
    keepOwnerRacesQuiet();
    qWarning("%s", note);
    qWarning("QDBusConnection: error: something else");
    std::exit(0);
}

TEST(AnOwnerRace, IsNotPrintedWhereEverythingElseIs) {
    EXPECT_EXIT(sayBoth(), testing::ExitedWithCode(0), "^QDBusConnection: error: something else\n$");
}

TEST(AnOwnerRace, IsToldFromOtherNotesOfTheBus) {
    EXPECT_TRUE(isNoteOfOwnerRace(note));
    EXPECT_FALSE(isNoteOfOwnerRace("QDBusConnection: error: could not send signal"));
    EXPECT_FALSE(isNoteOfOwnerRace("the name had an owner, but we thought it was none"));
}

} // namespace
} // namespace simulator
