#pragma once

#include "Simulator1Proxy.h"

#include "simulator/client/Client.h"
#include "simulator/player/Command.h"
#include "simulator/player/Mac.h"
#include "simulator/player/PrivateBus.h"

#include <QByteArray>
#include <QEventLoop>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <vector>

namespace simulator::player {

/// Writes a bundle to a folder of the real disk and replaces what is there. Reading it yields the same description,
/// also of a faulty bundle; the path in the description is ignored. Its program is a copy of program. Throws NotDone.
void writeBundle(const BundleOnDisk& bundle, const QString& folder, const QString& program);

/// The path of the program of a bundle.
QString programOf(const QString& folder);

/// The messages between the player and an application: one line of words each.
QByteArray lineOf(const QStringList& words);
QStringList wordsIn(const QByteArray& line);

/// A running application: a process of "submit", whose help describes the messages. Throws NotDone, also if no answer
/// comes within a minute.
class ClientProcess {
public:
    ClientProcess(const QString& program, const QString& busAddress);
    ~ClientProcess();
    ClientProcess(const ClientProcess&) = delete;
    ClientProcess& operator=(const ClientProcess&) = delete;

    /// Its unique name on the bus.
    const QString& name() const { return name_; }

    /// "submit", "answer" or "hear", with what follows. Returns when it is done.
    void order(const QStringList& words);
    struct Told {
        QString token;
        QString text;
    };
    /// What it was told since the last call, in order, including everything that the bus holds for it now.
    std::vector<Told> hear();
    /// Returns when it has ended.
    void quit();

private:
    /// Collects what it was told until another message comes, and returns that one.
    QStringList await();
    QStringList readLine();

    QProcess process_;
    QString name_;
    std::vector<Told> told_;
};

/// A Mac on a bus of its own. Applications are real bundles in a temporary folder, which stands for the disk, and real
/// processes that run in them; the service identifies the caller itself. With a command, the folder of its bundle
/// counts as /Applications, too. Needs a QCoreApplication. Throws NotDone.
class BusMac final : public Mac {
public:
    /// programs: the folder that contains sysextd and submit. command: what startCommand() starts. timeout: how long
    /// await() waits, in milliseconds.
    explicit BusMac(const QString& programs, const QStringList& command = {}, qint64 timeout = 0);

    WordList copies(const std::string& identifier) override;
    WordList requests() override;
    bool await(const std::function<bool()>& holds) override;
    void startCommand() override;
    void stopCommand() override;
    int statusOfCommand() override;

private:
    using Control = ComKelvraSimulator1ControlInterface;

    void write(const BundleOnDisk& bundle) override;
    void remove(const BundleOnDisk& bundle) override;
    std::string start(const std::string& application) override;
    void end(const std::string& application) override;
    void submit(const std::string& application, const std::string& token, const Ask& ask) override;
    void reply(const std::string& application, const std::string& token, bool replace) override;
    void act(const Saying& saying) override;
    void rest() override;

    /// Its path on the real disk.
    QString real(const std::string& path) const;
    std::vector<Word> withRealFolders(const std::vector<Word>& words) const;
    /// Once the bus says that it has left, the service has been told.
    void awaitDeparture(const QString& client) const;
    /// Waits for the answer of a call.
    template <typename Value>
    Value answered(QDBusPendingReply<Value> reply) const;
    void awaitStandstill();
    /// Asks the service, and asks again if it dies meanwhile.
    template <typename Value>
    Value asked(QDBusPendingReply<Value> (Control::*question)());
    QList<RequestEntry> openRequests() { return asked(&Control::ListRequests); }
    /// Passes on what the applications heard; returns whether there was anything.
    bool listen();

    PrivateBus bus_;
    QString submit_;
    Control control_;
    std::map<std::string, std::unique_ptr<ClientProcess>> processes_;
    QString commandBundle_;
    std::optional<Command> command_;
    qint64 timeout_;
    ServicePresence presence_{bus_.connection()};
    /// Ends when something may have changed.
    QEventLoop changes_;
};

} // namespace simulator::player
