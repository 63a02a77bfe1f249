#include "tests/simulator/SystemSettings/SettingsWindowTest.h"

#include <array>
#include <string>

namespace simulator::tests {

namespace {

TEST_F(SystemSettings, IsReadAndWalkedByTabInTheOrderShownAlsoAfterARowCameBeforeAnother) {
    open(copies("waiting"));
    control().show(QList{copyIn("disabled", "first.cmio")} << copies("waiting", "enabled") << removedNetwork());
    ASSERT_TRUE(untilSaid("first.cmio"));
    EXPECT_LT(texts().indexOf("first.cmio"), texts().indexOf(camera));
    EXPECT_EQ(walk(5), (QStringList{"Enable Camera", "Deny Camera", "Allow Camera", "Enable Network", "Restart"}));
}

TEST_F(SystemSettings, SendsKeyboardFocusNowhereElseOnItsWay) {
    open(copies("enabled", "enabled"));
    named("Enable Network")->setFocus();
    QStringList way;
    const auto connection = QObject::connect(qApp, &QApplication::focusChanged, [&] { way += focused(); });
    control().showRequests({question(network)});
    ASSERT_TRUE(untilShown("Authorize Network"));
    control().show(copies("disabled", "enabled"));
    control().showRequests({});
    ASSERT_TRUE(until([this] { return !shows("Authorize Network"); }));
    QObject::disconnect(connection);
    EXPECT_TRUE(named("Restart")->isEnabled());
    EXPECT_EQ(way, (QStringList{"Authorize Network", "Enable Network"}));
}

/// The conditions of the camera and of the network driver.
using Conditions = std::array<QString, 2>;

struct FocusCase {
    std::string name;
    QString focused;
    Conditions before;
    Conditions after;
    QString expected;

    friend void PrintTo(const FocusCase& focusCase, std::ostream* stream) { *stream << focusCase.name; }
};

class TheKeyboardFocusOfSystemSettings : public SystemSettings, public testing::WithParamInterface<FocusCase> {};

TEST_P(TheKeyboardFocusOfSystemSettings, StaysNearWhatIsGone) {
    const auto& [name, focusedBefore, before, after, expected] = GetParam();
    open(copies(before[0], before[1]));
    named(focusedBefore)->setFocus();
    control().show(copies(after[0], after[1]) << removedNetwork());
    ASSERT_TRUE(untilSaid("Removed at restart"));
    EXPECT_EQ(focused(), expected);
}

const FocusCase focusCases[]{
    {"ACopyComes", "Enable Network", {"", "enabled"}, {"waiting", "enabled"}, "Enable Network"},
    {"ASwitchComes", "Allow Camera", {"waiting", "enabled"}, {"enabled", "enabled"}, "Enable Camera"},
    {"ANextIsThere", "Deny Camera", {"waiting", "enabled"}, {"", "enabled"}, "Enable Network"},
    {"OneBeforeIsThere", "Enable Network", {"enabled", "enabled"}, {"enabled", ""}, "Enable Camera"},
    {"NothingIsLeft", "Enable Camera", {"enabled", ""}, {"", ""}, ""},
    {"ItIsOnRestart", "Restart", {"enabled", ""}, {"enabled", "enabled"}, "Restart"},
};

INSTANTIATE_TEST_SUITE_P(If, TheKeyboardFocusOfSystemSettings, testing::ValuesIn(focusCases),
                         [](const auto& focusCase) { return focusCase.param.name; });

} // namespace

} // namespace simulator::tests
