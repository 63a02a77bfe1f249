#pragma once

#include "Simulator1Proxy.h"
#include "simulator/bus/Types.h"
#include "tests/simulator/support/Program.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/support/PrivateBus.h"

#include <QDBusServiceWatcher>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace simulator::tests {

inline constexpr auto camera = "com.kelvra.ip-camera.cmio";
inline constexpr auto driver = "com.kelvra.driverkit.usb-to-poe";

using Control = ComKelvraSimulator1ControlInterface;

/// The same call after all that it needs of the service has been answered; fails the test if that is an error.
template <typename Reply>
Reply must(Reply reply) {
    reply.waitForFinished();
    EXPECT_FALSE(reply.isError()) << reply.error().message().toStdString();
    return reply;
}

/// A running application: a process that asks the service what it is told to. What it hears is a line each: the
/// request's token, and the answer's text as a scenario has it, such as "a finished 0"; or "refused" and why.
class Application {
public:
    /// program: in the bundle on whose behalf it asks.
    Application(const QString& program, const QProcessEnvironment& environment);

    /// kind: "activation", "deactivation" or "properties". Does not wait for the service to take it.
    void submit(const QString& token, const QString& kind, const QString& identifier);

    /// Handles events until it has heard this line, or one that begins with it; says whether it did.
    [[nodiscard]] bool hears(const QString& line);
    /// Every line so far.
    QStringList lines();
    /// Ends it as a crash would.
    [[nodiscard]] bool kill();
    [[nodiscard]] bool ended() { return process_.ended(); }

private:
    void order(const QStringList& words);

    Program process_;
};

/// A simulated Mac of the test's own: a bus that starts the service, an empty store, and an Applications folder that
/// holds one sound application, "Driver Manager", with a camera extension and two drivers, each 2.1/2105. Needs a
/// QCoreApplication.
class SimulatedMac {
public:
    SimulatedMac();

    /// A new connection; another client of the service.
    QDBusConnection connect() { return bus_->connect(); }
    const QDBusConnection& connection() const { return connection_; }
    Control& control() { return *control_; }
    ::tests::PrivateBus& bus() { return *bus_; }
    QProcessEnvironment environment() const;

    /// Where all of it lies; the state folder of the service, too.
    QString folder() const { return folder_.path(); }
    QString applications() const { return folder_.filePath("Applications"); }
    /// Of the service, as it lies in that folder.
    QString storeFile() const { return folder_.filePath("kelvra-simulator/store.sqlite"); }

    /// Of the application in the Applications folder.
    const QString& program() const { return program_; }
    /// A process of it.
    std::unique_ptr<Application> application() const;
    /// One whose program lies there.
    std::unique_ptr<Application> applicationAt(const QString& program) const;

    /// Has the service do what the words say; answers what it said to that, or the last part of the error's name.
    std::string does(const QStringList& words, const QByteArray& contents = {});
    /// The same for words that hold no blank.
    std::string does(const QString& line) { return does(line.split(u' ')); }
    /// The copies of an extension as "2105 enabled", oldest first.
    std::vector<std::string> copies(const QString& identifier);

    /// There must be one.
    uint processOfService() const;
    void signalService(int signal) const;
    /// Handles events until nobody has the service's name.
    [[nodiscard]] bool serviceIsGone() const;

private:
    QTemporaryDir folder_;
    QString program_;
    std::unique_ptr<::tests::PrivateBus> bus_;
    QDBusConnection connection_{QString{}};
    std::unique_ptr<Control> control_;
    /// Makes every change of the service's owner an event of this process, so that a test can wait for it.
    std::unique_ptr<QDBusServiceWatcher> watcher_;
};

/// Copies what a kill at this moment would leave of a store, and answers where it lies in the folder.
QString copyOfStore(const QString& store, const QString& folder);

/// A test in front of a simulated Mac.
class OnASimulatedMac : public testing::Test {
private:
    TestApplication application_;

protected:
    SimulatedMac mac;
};

} // namespace simulator::tests
