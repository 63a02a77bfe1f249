#pragma once

#include "Simulator1Proxy.h"

#include "simulator/play/ClientProcess.h"
#include "simulator/play/Departures.h"
#include "simulator/play/MacSettings.h"
#include "simulator/scenario/Mac.h"

#include <QDBusConnection>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace simulator::play {

/// The Mac of the service on a bus. Applications are real bundles in a temporary folder, which stands for the disk, and
/// real processes that run in them; the service finds out by itself who asks. What was installed before is lost;
/// settings are put back in the end. Needs a QCoreApplication.
class BusMac final : public scenario::Mac {
public:
    /// submit: the program that each application runs. mustEnd: whether what goes on is to be given up. Throws
    /// scenario::NotDone.
    BusMac(const QDBusConnection& bus, QString submit, std::function<bool()> mustEnd);

    void put(const std::string& application, const BundleOnDisk& bundle) override;
    void ask(const scenario::Ask& ask) override;
    void answer(const scenario::AnswerQuestion& answer) override;
    void quit(const std::string& application) override;
    void perform(const scenario::Deed& deed) override;
    std::optional<scenario::Heard> hear(const std::string& application) override;
    std::vector<scenario::CopyThere> copies(const std::string& identifier) override;
    std::vector<scenario::RequestThere> requests() override;

private:
    struct Application {
        /// Where its bundle lies on the real disk.
        QString folder;
        std::unique_ptr<ClientProcess> process;
        /// What it asked, by token.
        std::map<QString, scenario::Ask> asked;
        std::deque<scenario::Heard> heard;
    };

    QString folderFor(const std::string& path) const;
    ClientProcess& processOf(Application& application);
    void end(Application& application);
    void endAll();

    /// Waits until nothing happens any more.
    void rest();
    void awaitStandstill();
    /// The open requests, also of a service that has just died and come back.
    QList<RequestEntry> openRequests();
    /// Takes what the application heard; says whether it answered a question.
    bool listen(Application& application);

    ComKelvraSimulator1ControlInterface control_;
    QString submit_;
    std::function<bool()> mustEnd_;
    QTemporaryDir disk_;
    MacSettings settings_;
    Departures departures_;
    std::map<std::string, Application> applications_;
    int lastToken_ = 0;
};

} // namespace simulator::play
