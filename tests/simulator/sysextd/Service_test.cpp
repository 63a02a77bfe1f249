// The machine and its store, in this process.

#include "simulator/store/Store.h"
#include "simulator/sysextd/Service.h"
#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/TestApplication.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace simulator::tests {

namespace {

class AServiceInThisProcess : public testing::Test {
protected:
    AServiceInThisProcess() {
        QDir{}.mkpath(applications());
        makeSampleBundle(bundle(), ASKER);
        service.perform(
            [&](Machine& machine) { return machine.setApplicationsFolders({applications().toStdString()}); });
    }

    QString applications() const { return folder_.filePath("Applications"); }
    QString bundle() const { return applications() + "/Driver Manager.app"; }

    /// What a kill at this moment would leave in the store.
    State kept() const {
        const QString image = folder_.filePath("image.sqlite");
        for (const auto* const part : {"", "-wal"}) {
            QFile::remove(image + part);
            QFile::copy(file_ + part, image + part);
        }
        return Store{image.toStdString()}.load();
    }

private:
    TestApplication application_;
    QTemporaryDir folder_;
    QString file_ = folder_.filePath("store.sqlite");

protected:
    Service service{file_.toStdString()};
};

} // namespace

TEST_F(AServiceInThisProcess, HasKeptWhatItSaysWhenItSaysIt) {
    int said = 0;
    const auto look = [&] {
        ++said;
        EXPECT_TRUE(kept() == service.machine().state());
    };
    QObject::connect(&service, &Service::answered, look);
    QObject::connect(&service, &Service::happened, look);
    QObject::connect(&service, &Service::changed, look);
    QObject::connect(&service, &Service::restarting, look);
    service.perform([&](Machine& machine) {
        return machine.submit({"client", "a", bundle().toStdString(), RequestKind::activation, camera});
    });
    while (!service.machine().requests().empty() && service.machine().requests().begin()->second.stage != Stage::user)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_FALSE(service.perform([](Machine& machine) { return machine.allow(camera); }));
    service.perform([](Machine& machine) -> Verdict {
        machine.restart();
        return done;
    });
    EXPECT_GE(said, 8);
    EXPECT_EQ(service.machine().state().copies.begin()->second.state, CopyState::enabled);
}

} // namespace simulator::tests
