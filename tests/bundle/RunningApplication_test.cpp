#include "tests/support/Descriptors.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/QtTesting.h"
#include "tests/support/ScriptedService.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <unistd.h>

// The built application, on a private bus and without a display.

namespace {

class TheRunningApplication : public testing::Test {
protected:
    TheRunningApplication() {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", bus.address());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        environment.insert("XDG_RUNTIME_DIR", runtimeFolder.path());
        application.setProcessEnvironment(environment);
        application.setProgram(QStringLiteral(BUNDLE "/Contents/MacOS/Driver Manager"));
    }

    ~TheRunningApplication() override {
        application.kill();
        application.waitForFinished();
    }

    tests::PrivateBus bus;
    const QTemporaryDir runtimeFolder;
    tests::ScriptedService service{bus.address()};
    QProcess application;
};

TEST_F(TheRunningApplication, NeverPrintsToAnotherFileIfStandardOutputIsClosed) {
    application.setChildProcessModifier([] { close(STDOUT_FILENO); });
    application.start();
    ASSERT_TRUE(tests::until([&] { return !service.calls().empty(); }));
    EXPECT_EQ(QFile::symLinkTarget(QStringLiteral("/proc/%1/fd/1").arg(application.processId())), "/dev/null");
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

} // namespace
