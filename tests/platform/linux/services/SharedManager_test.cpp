#include "tests/support/EventLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScriptedService.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace platform {
namespace {

using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::processEventsUntil;
using tests::ScriptedService;

class TheSharedManager : public testing::Test {
protected:
    /// Runs a program that asks its shared manager, answers it, and expects it to end well and quietly.
    void expectThatItAsksTheService(const QProcessEnvironment& environment) {
        ScriptedService service{bus.address()};
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(SUBMITTING_PROGRAM, QStringList{});
        ASSERT_TRUE(processEventsUntil([&] { return !service.calls().empty(); }));
        service.signal("FoundProperties", {service.token(0), onTheBus(QList<CopyOnTheBus>{})});
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.readAllStandardOutput(), "found 0 for camera\n");
        EXPECT_EQ(program.readAllStandardError(), "");
    }

    tests::PrivateBus bus;
};

TEST_F(TheSharedManager, AsksOnTheSessionBusOfItsEnvironment) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
    expectThatItAsksTheService(environment);
}

TEST_F(TheSharedManager, AsksOnTheBusOfTheRuntimeFolderWhereTheEnvironmentNamesNone) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove("DBUS_SESSION_BUS_ADDRESS");
    environment.insert("XDG_RUNTIME_DIR", QString{bus.address()}.remove("unix:path=").remove("/bus"));
    expectThatItAsksTheService(environment);
}

} // namespace
} // namespace platform
