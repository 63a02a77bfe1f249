#include "SystemExtensionsTest.h"
#include "platform/linux/SimulatorManager.h"

namespace platform {
namespace {

using tests::ScriptedService;

class ARestartOfTheMachine : public tests::SystemExtensionsTest {};

TEST_F(ARestartOfTheMachine, EndsTheApplicationWithAStatusOfItsOwn) {
    submitAccepted();
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [this] { service->broadcast("Restarting"); }, Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), exitStatusOfRestart);
}

TEST_F(ARestartOfTheMachine, IsNotBelievedOfAStranger) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [&] {
            stranger.broadcast("Restarting");
            stranger.flush();
            service->broadcast("Restarting", {"with an argument"});
            service->signal("Finished", {service->token(0), qlonglong{0}});
        },
        Qt::QueuedConnection);
    delegate->onHearing = [](const std::string&) { QCoreApplication::exit(0); };
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

} // namespace
} // namespace platform
