#include "platform/linux/SimulatorManager.h"
#include "tests/support/Descriptors.h"
#include "tests/support/EventLoop.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScriptedService.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <string>
#include <unistd.h>

// The application as it was built, on a bus of the test's own, in a window that nobody sees.

namespace {

using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::processEventsUntil;
using tests::ScriptedService;

const QString bundle = QStringLiteral(BUNDLE);
const QString executable = QStringLiteral("/Contents/MacOS/Driver Manager");

class TheRunningApplication : public testing::Test {
protected:
    TheRunningApplication() {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_RUNTIME_DIR", runtimeFolder.path());
        application.setProcessEnvironment(environment);
    }

    ~TheRunningApplication() override {
        application.kill();
        application.waitForFinished();
    }

    /// Starts it and returns once it has asked for its three extensions.
    void start() {
        application.start(bundle + executable, QStringList{});
        ASSERT_TRUE(processEventsUntil([&] { return service.calls().size() >= 3; }));
    }

    void answerAll() {
        for (std::size_t call = 0; call < 3; ++call) {
            const auto identifier = service.calls().at(call).arguments().at(2).toString();
            service.signal("FoundProperties",
                           {service.token(call), onTheBus(QList<CopyOnTheBus>{{identifier, "2.1", "2105", true}})});
        }
    }

    /// Has the machine restart, which the application answers by ending if it is alive.
    void expectThatItIsAlive() {
        service.broadcast("Restarting");
        ASSERT_TRUE(application.waitForFinished());
        EXPECT_EQ(application.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(application.exitCode(), platform::exitStatusOfRestart);
    }

    tests::PrivateBus bus;
    const QTemporaryDir runtimeFolder;
    ScriptedService service{bus.address()};
    QProcess application;
};

TEST_F(TheRunningApplication, AsksForTheCopiesOfEachExtension) {
    start();
    QStringList asked;
    for (const auto& call : service.calls())
        asked << call.arguments().at(1).toString() + " " + call.arguments().at(2).toString();
    EXPECT_EQ(asked, (QStringList{"properties com.kelvra.driverkit.base", "properties com.kelvra.ip-camera.cmio",
                                  "properties com.kelvra.driverkit.usb-to-poe"}));
}

TEST_F(TheRunningApplication, EndsWithAStatusOfItsOwnWhenTheMachineRestarts) {
    start();
    expectThatItIsAlive();
    EXPECT_EQ(application.readAllStandardError(), "");
}

TEST_F(TheRunningApplication, PrintsALineForEachAnswer) {
    start();
    answerAll();
    ASSERT_TRUE(processEventsUntil([&] { return application.peek(10'000).count('\n') == 3; }));
    EXPECT_THAT(application.readAllStandardOutput().toStdString(), testing::HasSubstr("com.kelvra.ip-camera.cmio"));
}

TEST_F(TheRunningApplication, LogsWhatWentWrongToStandardError) {
    service.setCalls(ScriptedService::Calls::areRefused);
    start();
    ASSERT_TRUE(processEventsUntil([&] {
        application.setReadChannel(QProcess::StandardError);
        return application.peek(10'000).count('\n') == 3;
    }));
    EXPECT_EQ(application.readLine(), "Sysex request failed: The extension service did not take the request: too many "
                                      "requests (An unknown error occurred.)\n");
}

TEST_F(TheRunningApplication, StaysAliveWhenTheServiceDies) {
    start();
    service.die();
    application.setReadChannel(QProcess::StandardError);
    ASSERT_TRUE(processEventsUntil([&] { return application.peek(10'000).count('\n') == 3; }));
    EXPECT_EQ(application.state(), QProcess::Running);
}

TEST_F(TheRunningApplication, StaysAliveWhereStandardOutputIsFull) {
    application.setChildProcessModifier([] { dup2(open("/dev/full", O_WRONLY), STDOUT_FILENO); });
    start();
    answerAll();
    expectThatItIsAlive();
}

TEST_F(TheRunningApplication, StaysAliveWhereNobodyIsThereToReadWhatItPrints) {
    application.setChildProcessModifier([] {
        auto pipe = tests::makePipe();
        pipe.reader.close();
        dup2(pipe.writer.get(), STDOUT_FILENO);
        dup2(pipe.writer.get(), STDERR_FILENO);
    });
    start();
    answerAll();
    expectThatItIsAlive();
}

TEST_F(TheRunningApplication, EndsByASignalAlsoWhileTheBusKeepsItWaiting) {
    const QString path = runtimeFolder.filePath("silent");
    const auto silent = tests::listenAt(path.toStdString());
    auto environment = application.processEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
    application.setProcessEnvironment(environment);
    application.start(bundle + executable, QStringList{});
    const tests::Descriptor waiting{accept(silent.get(), nullptr, nullptr)};
    application.terminate();
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(application.exitCode(), SIGTERM);
}

TEST_F(TheRunningApplication, StaysAliveWhereNobodyReadsThePipeThatItPrintsTo) {
    const auto pipe = tests::makePipe();
    application.setChildProcessModifier([&] {
        fcntl(pipe.writer.get(), F_SETFL, O_NONBLOCK);
        while (write(pipe.writer.get(), "x", 1) == 1) {
        }
        fcntl(pipe.writer.get(), F_SETFL, 0);
        dup2(pipe.writer.get(), STDOUT_FILENO);
    });
    start();
    answerAll();
    expectThatItIsAlive();
}

TEST_F(TheRunningApplication, NeverPrintsToAnotherFileWhereStandardOutputIsClosed) {
    application.setChildProcessModifier([] { close(STDOUT_FILENO); });
    start();
    EXPECT_EQ(QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/1").arg(application.processId())), "/dev/null");
    answerAll();
    expectThatItIsAlive();
}

// A broken bundle.

class ABrokenBundle : public TheRunningApplication {
protected:
    ABrokenBundle() {
        QProcess copy;
        copy.start("cp", {"-R", bundle, broken});
        copy.waitForFinished();
        application.setProgram(broken + executable);
    }

    /// Starts the application of the bundle and expects it to stop on account of its Info.plist.
    void expectToStop(const std::string& reason) {
        application.start();
        ASSERT_TRUE(processEventsUntil([&] { return application.state() == QProcess::NotRunning; }));
        EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(application.exitCode(), SIGABRT);
        EXPECT_EQ(application.readAllStandardError().toStdString(),
                  "Fatal error: " + infoFile.toStdString() + ": " + reason + "\n");
    }

    const QTemporaryDir folder;
    const QString broken = folder.filePath("ein Ordner, größer & \"anders\".app");
    const QString infoFile = broken + "/Contents/Info.plist";
};

TEST_F(ABrokenBundle, StopsTheApplicationWhereItHasNoInfoFile) {
    QFile::remove(infoFile);
    expectToStop("there is no such file");
}

TEST_F(ABrokenBundle, StopsTheApplicationWhereItHasNoBuild) {
    QFile file{infoFile};
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(R"(<?xml version="1.0"?><plist version="1.0"><dict/></plist>)");
    file.close();
    expectToStop("CFBundleVersion is missing");
}

TEST_F(ABrokenBundle, IsNoReasonToStopWithoutItsImages) {
    QDir{broken + "/Contents/Resources"}.removeRecursively();
    application.start();
    ASSERT_TRUE(processEventsUntil([&] { return service.calls().size() >= 3; }));
    answerAll();
    expectThatItIsAlive();
}

} // namespace
