#pragma once

#include "Simulator1Proxy.h"
#include "simulator/bus/Names.h"
#include "tests/simulator/application/Asker.h"
#include "tests/simulator/support/TestApplication.h"
#include "tests/support/PrivateBus.h"

#include <QDBusServiceWatcher>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace simulator::tests {

using Control = ComKelvraSimulator1ControlInterface;

/// The service itself on a bus of its own, which starts it, and a sealed sample application in its Applications folder.
class TheService : public testing::Test {
protected:
    TheService();

    QString applications() const { return folder_.filePath("Applications"); }
    QString storeFile() const { return folder_.filePath("kelvra-simulator/store.sqlite"); }
    QString stateFolder() const { return folder_.path(); }
    /// Of the sample application.
    QString program() const { return program_; }
    ::tests::PrivateBus& bus() { return *bus_; }
    const QDBusConnection& connection() const { return connection_; }
    Control& control() { return *control_; }
    QProcessEnvironment environment() const;

    /// A process in the sample application's bundle.
    std::unique_ptr<Asker> application() { return std::make_unique<Asker>(program_, environment()); }
    /// One that lies in no bundle.
    std::unique_ptr<Asker> strayProgram();

    template <typename Reply>
    static Reply must(Reply reply) {
        reply.waitForFinished();
        EXPECT_FALSE(reply.isError()) << reply.error().message().toStdString();
        return reply;
    }
    /// The name of the error without its prefix; "none" if there is none.
    static QString errorOf(QDBusPendingReply<> reply);

    /// The copies of one extension as "2105 enabled", oldest first.
    std::vector<std::string> copies(const QString& identifier);

    uint processOfService();
    void signalService(int signal);
    bool serviceIsGone();

private:
    TestApplication application_;
    QTemporaryDir folder_;
    QString program_;
    std::unique_ptr<::tests::PrivateBus> bus_;
    QDBusConnection connection_{QString{}};
    std::unique_ptr<Control> control_;
    /// Makes every change of the service's owner an event of this process, so that a test can wait for it.
    std::unique_ptr<QDBusServiceWatcher> watcher_;
};

} // namespace simulator::tests
