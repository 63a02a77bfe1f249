#include "SystemExtensionsTest.h"

#include <QProcess>
#include <QProcessEnvironment>

// How the manager handles messages on the bus. The tests of the contract cover those of an ordinary service, with the
// simulator.

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::ScriptedService;
using tests::until;

class ASystemExtensionRequest : public tests::SystemExtensionsTest {};

TEST_F(ASystemExtensionRequest, GetsAnUnknownResultUnchanged) {
    submitAccepted();
    service->signal("Finished", {service->token(0), qlonglong{-7}});
    waitForAnswers(1);
    EXPECT_THAT(record.lines, ElementsAre("camera finished -7"));
}

TEST_F(ASystemExtensionRequest, TakesTenThousandCopiesAndAMegabyteOfVersion) {
    submitAccepted();
    QList<CopyOnTheBus> copies(10'000, CopyOnTheBus{"id", "1", "1"});
    copies[9'999].version = QString{1'000'000, u'9'};
    service->signal("FoundProperties", {service->token(0), onTheBus(copies)});
    waitForAnswers(1);
    ASSERT_EQ(record.copies.size(), 10'000U);
    EXPECT_EQ(record.copies.back().bundleVersion.size(), 1'000'000U);
}

TEST_F(ASystemExtensionRequest, GetsNothingAfterItsLastAnswer) {
    submitAccepted();
    const auto token = service->token(0);
    finish();
    service->signal("NeedsApproval", {token});
    service->signal("Failed", {token, "", qlonglong{4}, ""});
    service->signal("FoundProperties", {token, onTheBus(QList<CopyOnTheBus>{})});
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, ElementsAre("camera finished 0"));
}

/// Public sources do not say whether and when a properties request also finishes.
TEST_F(ASystemExtensionRequest, ForPropertiesIgnoresAFinish) {
    startService();
    const auto listener = std::make_shared<tests::Listener>("camera", record);
    const auto request = OSSystemExtensionRequest::propertiesRequestForExtension("camera", DispatchQueue::main());
    request->setDelegate(listener);
    manager.submitRequest(request);
    waitForCalls(1);
    finish();
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, IsEmpty());
    service->signal("FoundProperties", {service->token(0), onTheBus(QList<CopyOnTheBus>{})});
    waitForAnswers(1);
    EXPECT_THAT(record.lines, ElementsAre("camera found 0"));
}

TEST_F(ASystemExtensionRequest, AnswersNoQuestionOnceItHasEnded) {
    submitAccepted();
    record.onLine = [this] {
        if (record.lines.back() != "camera is asked") return;
        finish();
        waitForAnswers(2);
    };
    askForReplacement();
    waitForAnswers(2);
    waitForAnswerToAnotherRequest();
    for (const auto& call : service->calls())
        EXPECT_EQ(call.member(), "Submit");
}

TEST_F(ASystemExtensionRequest, CanFinishBeforeItsSubmissionIsAccepted) {
    startService();
    service->finishBeforeReplying();
    submit("camera");
    waitForAnswers(1);
    waitForCalls(1);
    EXPECT_THAT(record.lines, ElementsAre("camera finished 0"));
}

TEST_F(ASystemExtensionRequest, IsDroppedWithItsManager) {
    startService();
    const auto request = submit("camera");
    waitForCalls(1);
    finish();
    manager.close();
    EXPECT_TRUE(request.expired());
    EXPECT_THAT(record.lines, IsEmpty());
}

// Messages of a faulty or foreign service.

TEST_F(ASystemExtensionRequest, FailsOnAnAnswerWithWrongArguments) {
    const std::vector<std::pair<QString, QVariantList>> malformed{
        {"ReplacementAsked", {}},
        {"ReplacementAsked", {onTheBus(CopyOnTheBus{})}},
        {"NeedsApproval", {"more"}},
        {"Finished", {}},
        {"Finished", {"zero"}},
        {"Finished", {int{0}}},
        {"Failed", {"domain", qlonglong{1}}},
        {"Failed", {"domain", "code", "text"}},
        {"FoundProperties", {}},
        {"FoundProperties", {onTheBus(CopyOnTheBus{})}},
        {"FoundProperties", {QStringList{"camera"}}},
    };
    startService();
    for (const auto& [member, arguments] : malformed) {
        record = {};
        const auto call = service->calls().size();
        submit("camera");
        waitForCalls(call + 1);
        service->signal(member, QVariantList{service->token(call)} + arguments);
        expectOneFailure("malformed answer: " + member.toStdString());
    }
}

TEST_F(ASystemExtensionRequest, IgnoresWhatIsNotAnAnswerToIt) {
    submitAccepted();
    service->signal("Finished", {"no such token", qlonglong{0}});
    service->signal("Finished", {"no such token"});
    service->signal("Finished", {""});
    service->signal("Finished", {});
    service->signal("Finished", {qlonglong{1}, service->token(0)});
    service->signal("FoundProperties", {onTheBus(QList<CopyOnTheBus>{})});
    service->signal("Progress", {service->token(0), qlonglong{50}});
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, IsEmpty());
}

TEST_F(ASystemExtensionRequest, IgnoresEveryoneButTheOwnerOfTheName) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    stranger.signal(service->client(), "Finished", {service->token(0), qlonglong{0}});
    stranger.broadcast("Finished", {service->token(0), qlonglong{0}});
    stranger.signal(service->client(), "Failed", {service->token(0)});
    stranger.flush();
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, IsEmpty());
}

TEST_F(ASystemExtensionRequest, LearnsTheOwnerOfTheNameOnlyFromTheBus) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    stranger.forgeOwnerChange(service->client(), service->uniqueName(), stranger.uniqueName());
    stranger.signal(service->client(), "Finished", {service->token(0), qlonglong{0}});
    stranger.flush();
    waitForAnswerToAnotherRequest();
    EXPECT_THAT(record.lines, IsEmpty());
}

// The simulated machine restarts.

class ARestartOfTheMachine : public tests::SystemExtensionsTest {
protected:
    /// Runs `work` in the main loop, and returns the status with which the loop ends.
    template <typename Work>
    static int statusAfter(const Work work) {
        QMetaObject::invokeMethod(QCoreApplication::instance(), work, Qt::QueuedConnection);
        return QCoreApplication::exec();
    }
};

TEST_F(ARestartOfTheMachine, EndsTheApplicationWithAStatusOfItsOwn) {
    submitAccepted();
    EXPECT_EQ(statusAfter([this] { service->broadcast("Restarting"); }), exitStatusOfRestart);
}

TEST_F(ARestartOfTheMachine, IsIgnoredFromAnotherSender) {
    submitAccepted();
    const ScriptedService stranger{bus.address(), ScriptedService::Owns::nothing};
    record.onLine = [] { QCoreApplication::exit(0); };
    const auto say = [&] {
        stranger.broadcast("Restarting");
        stranger.flush();
        service->broadcast("Restarting", {"with an argument"});
        finish();
    };
    EXPECT_EQ(statusAfter(say), 0);
}

// The shared manager of a process.

class TheSharedManager : public testing::Test {
protected:
    /// Runs a program that uses the shared manager, answers it, and expects exit status 0 and no error output.
    void expectThatItAsksTheService(const QProcessEnvironment& environment) {
        ScriptedService service{bus.address()};
        QProcess program;
        program.setProcessEnvironment(environment);
        program.start(PROGRAM, QStringList{});
        ASSERT_TRUE(until([&] { return !service.calls().empty(); }));
        service.signal("FoundProperties", {service.token(0), onTheBus(QList<CopyOnTheBus>{})});
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitCode(), 0);
        EXPECT_EQ(program.readAllStandardOutput(), "camera found 0\n");
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
    auto environment = bus.environment();
    environment.remove("DBUS_SESSION_BUS_ADDRESS");
    expectThatItAsksTheService(environment);
}

} // namespace
} // namespace platform
