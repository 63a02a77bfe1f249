// "sysextctl play --bus": on a bus, a service and a store of its own.

#include "tests/simulator/player/APlayer.h"

#include <csignal>

namespace simulator::tests {

namespace {

class AScenarioOnTheBus : public APlayer, public testing::WithParamInterface<const char*> {};

TEST_P(AScenarioOnTheBus, GoesAsItSays) {
    const QString file = QString{SCENARIOS} + '/' + GetParam() + ".scenario";
    const Outcome outcome = started(file)->outcome();
    EXPECT_EQ(outcome.errors, "");
    EXPECT_NE(outcome.output.find(" steps, all as expected\n"), std::string::npos);
    EXPECT_EQ(outcome.code, 0);
}

/// Each shows something that is not the same on a bus: processes, files, seals, profiles, lives and times.
INSTANTIATE_TEST_SUITE_P(, AScenarioOnTheBus,
                         testing::Values("plain-road", "upgrade", "replacement-declined", "another-application",
                                         "error-02-missing-entitlement", "error-03-outside-applications",
                                         "error-08-invalid-signature", "error-12-superseded", "foreign-error",
                                         "late-answer", "profile-arrives", "service-crash", "waiting-over-a-restart"),
                         [](const auto& which) {
                             std::string name = which.param;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(APlayer, EndsAtTheFirstLineThatDoesNotGoAsItSays) {
    const auto file = written("activate com.kelvra.ip-camera.cmio\nexpect finished 0\nexpect nothing\n");
    EXPECT_EQ(
        started(file->fileName())->outcome(),
        failed(1, file->fileName().toStdString() +
                      ":2: \"expect finished 0\": Driver Manager heard needs approval to com.kelvra.ip-camera.cmio"));
    EXPECT_TRUE(leavesNothing());
}

TEST_F(APlayer, IsNotInTheWayOfAnother) {
    const auto file = written("activate com.kelvra.ip-camera.cmio\nexpect needs approval\n"
                              "allow com.kelvra.ip-camera.cmio\nexpect finished 0\n");
    const auto one = started(file->fileName());
    const auto other = started(file->fileName());
    EXPECT_EQ(one->outcome().code, 0);
    EXPECT_EQ(other->outcome().code, 0);
    EXPECT_TRUE(leavesNothing());
}

TEST_F(APlayer, LeavesNothingWhenItIsKilled) {
    const auto file = written(QByteArray{"restart\n"}.repeated(100'000));
    for (const int signal : {SIGKILL, SIGTERM}) {
        const auto player = started(file->fileName());
        ASSERT_TRUE(isThere());
        ASSERT_TRUE(player->signal(signal));
        ASSERT_TRUE(player->ended());
        EXPECT_TRUE(leavesNothing());
    }
}

class APlayerBesideAMac : public OnASimulatedMac {};

TEST_F(APlayerBesideAMac, TouchesNothingOfIt) {
    EXPECT_EQ(mac.does("install com.kelvra.ip-camera.cmio 2.0 2004"), "");
    EXPECT_EQ(mac.does("switch properties error"), "");
    const auto file = written("properties com.kelvra.ip-camera.cmio\nexpect found none\ndeveloper on\n"
                              "install com.kelvra.ip-camera.cmio 9 9\n");
    Program player{SYSEXTCTL, {"play", file->fileName(), "--bus"}, mac.environment()};
    EXPECT_EQ(player.outcome().code, 0);
    EXPECT_EQ(mac.copies(camera), std::vector<std::string>{"2004 enabled"});
    EXPECT_EQ(mac.does("developer"), "Developer mode is off\n");
}

} // namespace

} // namespace simulator::tests
