#include "simulator/sysextctl/SwitchList.h"
#include "tests/simulator/support/Printing.h"

namespace simulator::ctl {

namespace {

QList<SwitchEntry> two() {
    return {{"denied", "11", {"11", "silent"}, "what a denied activation gets"},
            {"superseded", "older", {"older", "newer"}, "which of two requests fails"}};
}

} // namespace

TEST(TheSwitches, AreShownWithTheirValueAndEveryValueThatTheyTake) {
    EXPECT_EQ(switchesAsText(two()), "denied\t11\t(11 | silent)\twhat a denied activation gets\n"
                                     "superseded\tolder\t(older | newer)\twhich of two requests fails\n");
}

TEST(TheSwitches, CanBeChosenByName) {
    ASSERT_EQ(switchesNamed(two(), "superseded").size(), 1);
    EXPECT_EQ(switchesNamed(two(), "superseded").first().name, "superseded");
    EXPECT_EQ(switchesNamed(two(), "unknown").size(), 0);
    EXPECT_EQ(switchesNamed(two(), {}).size(), 2);
}

} // namespace simulator::ctl
