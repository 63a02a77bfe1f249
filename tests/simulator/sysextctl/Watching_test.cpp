#include "simulator/sysextctl/Watching.h"
#include "tests/simulator/support/Printing.h"

namespace simulator::ctl {

TEST(AnEvent, IsOneLineOfThreeColumns) {
    EXPECT_EQ(eventLine(1500, "com.kelvra.ip-camera.cmio", "allowed"), "1.500\tcom.kelvra.ip-camera.cmio\tallowed\n");
    EXPECT_EQ(eventLine(0, "", "restart\nnow"), "0.000\t-\trestart now\n");
}

} // namespace simulator::ctl
