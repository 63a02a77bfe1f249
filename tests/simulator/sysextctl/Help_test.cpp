#include "simulator/sysextctl/Help.h"
#include "simulator/sysextctl/Verbs.h"
#include "tests/simulator/support/Printing.h"

namespace simulator::ctl {

TEST(TheHelp, HasALineForEachVerb) {
    const auto text = help({});
    for (const auto& verb : verbs())
        EXPECT_TRUE(text.contains("\n  " + verb.name + ' ')) << verb.name.toStdString();
}

TEST(TheHelp, FitsAScreenOf120Columns) {
    auto texts = help({});
    for (const auto& verb : verbs())
        texts += help(verb.name);
    for (const auto& line : texts.split(u'\n'))
        EXPECT_LE(line.size(), 120) << line.toStdString();
}

TEST(TheHelpOfAVerb, SaysHowItIsCalledAndWhatItMeans) {
    EXPECT_EQ(help("install"), "usage: sysextctl install ID SHORT BUILD [STATE]\n"
                               "\n"
                               "Puts a copy there without a request.\n"
                               "STATE is enabled (the default; the approval is recorded), waiting, disabled or "
                               "uninstalling.\n"
                               "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004\n");
}

} // namespace simulator::ctl
