#include "platform/linux/SimulatorManager.h"
#include "tests/support/Descriptors.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"
#include "tests/support/ScriptedService.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <string>
#include <unistd.h>

// The built application, on a private bus and without a display.

namespace {

using tests::CopyOnTheBus;
using tests::onTheBus;
using tests::ScriptedService;
using tests::until;

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
        application.setProgram(bundle + executable);
    }

    ~TheRunningApplication() override {
        application.kill();
        application.waitForFinished();
    }

    /// Starts it with the outputs that `open` makes. Returns once it has asked for its three extensions.
    void start(const std::function<void()>& open = [] {}) {
        application.setChildProcessModifier(open);
        application.start();
        ASSERT_TRUE(until([&] { return service.calls().size() >= 3; }));
    }

    void answerAll() {
        for (std::size_t call = 0; call < 3; ++call) {
            const auto identifier = service.calls().at(call).arguments().at(2).toString();
            service.signal("FoundProperties",
                           {service.token(call), onTheBus(QList<CopyOnTheBus>{{identifier, "2.1", "2105", true}})});
        }
    }

    /// Answers its three requests and restarts the machine, after which the application ends if it still runs.
    void expectThatItGoesOn() {
        answerAll();
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

TEST_F(TheRunningApplication, KeepsRunningIfTheReaderOfItsOutputIsGone) {
    start([] {
        auto pipe = tests::makePipe();
        pipe.reader.close();
        dup2(pipe.writer.get(), STDOUT_FILENO);
        dup2(pipe.writer.get(), STDERR_FILENO);
    });
    expectThatItGoesOn();
}

TEST_F(TheRunningApplication, NeverPrintsToAnotherFileIfStandardOutputIsClosed) {
    start([] { close(STDOUT_FILENO); });
    EXPECT_EQ(QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/1").arg(application.processId())), "/dev/null");
    expectThatItGoesOn();
}

TEST_F(TheRunningApplication, EndsOnASignalEvenWhileItWaitsForTheBus) {
    const QString path = runtimeFolder.filePath("silent");
    const auto silent = tests::listenAt(path.toStdString());
    auto environment = application.processEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + path);
    application.setProcessEnvironment(environment);
    application.start();
    const tests::Descriptor waiting{accept(silent.get(), nullptr, nullptr)};
    application.terminate();
    ASSERT_TRUE(application.waitForFinished());
    EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(application.exitCode(), SIGTERM);
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

    /// Starts the application of the bundle and expects it to stop because of its Info.plist.
    void expectToStop(const std::string& reason) {
        application.start();
        ASSERT_TRUE(until([&] { return application.state() == QProcess::NotRunning; }));
        EXPECT_EQ(application.exitStatus(), QProcess::CrashExit);
        EXPECT_EQ(application.exitCode(), SIGABRT);
        EXPECT_EQ(application.readAllStandardError().toStdString(),
                  "Fatal error: " + infoFile.toStdString() + ": " + reason + "\n");
    }

    const QTemporaryDir folder;
    const QString broken = folder.filePath("ein Ordner, größer & \"anders\".app");
    const QString infoFile = broken + "/Contents/Info.plist";
};

TEST_F(ABrokenBundle, StopsTheApplicationIfItHasNoInfoFile) {
    QFile::remove(infoFile);
    expectToStop("there is no such file");
}

TEST_F(ABrokenBundle, DoesNotStopTheApplicationIfOnlyItsImagesAreMissing) {
    QDir{broken + "/Contents/Resources"}.removeRecursively();
    start();
    expectThatItGoesOn();
}

} // namespace
