#include "simulator/player/BusMac.h"

#include "simulator/client/Client.h"
#include "simulator/disk/Seal.h"
#include "simulator/player/Command.h"
#include "simulator/player/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTimer>
#include <QVariant>

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace simulator::player {

namespace {

constexpr int patience = 60'000;
/// How often in a row the service may crash.
constexpr int mostDeaths = 5;

/// Stages that a request leaves by itself. A delayed request leaves when it is due.
constexpr std::array working{Stage::checking, Stage::validating, Stage::staging, Stage::removing};

bool isWorking(const RequestEntry& request) {
    return std::any_of(working.begin(), working.end(),
                       [&](const Stage stage) { return request.stage.toStdString() == nameOf(stage); });
}

using Dictionary = PropertyList::Dictionary;

void writeInfo(const QString& bundle, const Dictionary& info) {
    writeFile(bundle + "/Contents/Info.plist", QByteArray::fromStdString(PropertyList{info}.toXml()));
}

void seal(const QString& bundle, const std::string& team, const Dictionary& entitlements) {
    const std::string path = bundle.toStdString();
    const auto digests = digestsOf(path);
    const std::string problem = digests ? writeSeal(path, {team, entitlements, *digests}) : "it cannot be read";
    if (!problem.empty()) throw NotDone{path + ": " + problem};
}

/// What an Info.plist says of an extension's category; a driver's is its file name alone.
void describeCategory(Dictionary& info, const ExtensionOnDisk& extension) {
    if (extension.category == Category::camera) {
        info["CMIOExtension"] = Dictionary{{"CMIOExtensionMachServiceName", extension.machServiceName}};
    } else if (extension.category == Category::network) {
        info["NetworkExtension"] = Dictionary{};
    } else if (extension.category == Category::endpointSecurity) {
        info["NSEndpointSecurityMachServiceName"] = extension.identifier;
    }
}

Dictionary infoOf(const ExtensionOnDisk& extension) {
    Dictionary info{{"CFBundleDisplayName", extension.name},
                    {"CFBundleShortVersionString", extension.version.shortVersion},
                    {"CFBundleVersion", extension.version.version}};
    if (!extension.identifier.empty()) info["CFBundleIdentifier"] = extension.identifier;
    describeCategory(info, extension);
    const bool isDriver = QFileInfo{QString::fromStdString(extension.fileName)}.suffix() == "dext";
    const auto* const usage = isDriver ? "OSBundleUsageDescription" : "NSSystemExtensionUsageDescription";
    if (extension.hasUsageDescription) info[usage] = "Plays its part in a scenario.";
    return info;
}

Dictionary entitlementsOf(const ExtensionOnDisk& extension) {
    if (extension.applicationGroups.empty()) return {};
    PropertyList::Array groups{extension.applicationGroups.begin(), extension.applicationGroups.end()};
    return {{"com.apple.security.application-groups", std::move(groups)}};
}

void writeExtension(const ExtensionOnDisk& extension, const QString& folder) {
    const QString path = folder + "/" + QString::fromStdString(extension.fileName);
    writeInfo(path, infoOf(extension));
    writeFile(path + "/Contents/MacOS/code", "as it was sealed");
    if (extension.team.empty()) return;
    seal(path, extension.team, entitlementsOf(extension));
    if (!extension.sealMatches.value_or(true)) writeFile(path + "/Contents/MacOS/code", "changed since");
}

Dictionary infoOf(const BundleOnDisk& bundle) {
    Dictionary info{{"CFBundleIdentifier", bundle.identifier}, {"CFBundleExecutable", "submit"}};
    if (bundle.extensions.empty()) return info;
    info["CFBundleShortVersionString"] = bundle.extensions.front().version.shortVersion;
    info["CFBundleVersion"] = bundle.extensions.front().version.version;
    return info;
}

} // namespace

// An application's bundle --------------------------------------------------------------------------------------------

void writeBundle(const BundleOnDisk& bundle, const QString& folder, const QString& program) {
    if (!QDir{folder}.removeRecursively()) throw NotDone{folder.toStdString() + ": it cannot be removed"};
    writeInfo(folder, infoOf(bundle));
    for (const ExtensionOnDisk& extension : bundle.extensions)
        writeExtension(extension, folder + "/Contents/Library/SystemExtensions");
    QDir{}.mkpath(QFileInfo{programOf(folder)}.path());
    if (!QFile::copy(program, programOf(folder)))
        throw NotDone{program.toStdString() + ": it cannot be copied into an application"};
    if (bundle.team.empty()) return;
    Dictionary entitlements;
    if (bundle.mayInstallExtensions) entitlements["com.apple.developer.system-extension.install"] = true;
    seal(folder, bundle.team, entitlements);
}

QString programOf(const QString& folder) {
    return folder + "/Contents/MacOS/submit";
}

// The messages -------------------------------------------------------------------------------------------------------

QByteArray lineOf(const QStringList& words) {
    return QJsonDocument{QJsonArray::fromStringList(words)}.toJson(QJsonDocument::Compact) + '\n';
}

QStringList wordsIn(const QByteArray& line) {
    return QJsonDocument::fromJson(line).toVariant().toStringList();
}

namespace {

/// A running application: a process of "submit", whose help describes the messages. Throws NotDone, also if no answer
/// comes within a minute.
class ClientProcess {
public:
    ClientProcess(const QString& program, const QString& busAddress) {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", busAddress);
        process_.setProcessEnvironment(environment);
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(program, QStringList{});
        name_ = await().value(1);
    }
    ~ClientProcess() {
        process_.kill();
        process_.waitForFinished(patience);
    }
    ClientProcess(const ClientProcess&) = delete;
    ClientProcess& operator=(const ClientProcess&) = delete;

    /// Its unique name on the bus.
    const QString& name() const { return name_; }
    /// "submit", "answer" or "hear", with what follows. Returns when it is done.
    void order(const QStringList& words) {
        process_.write(lineOf(words));
        await();
    }
    /// The messages "told" since the last call, in order, including everything that the bus holds for it now.
    QList<QStringList> hear() {
        order({"hear"});
        return std::exchange(told_, {});
    }
    /// Returns when it has ended.
    void quit() {
        process_.closeWriteChannel();
        const bool hasEnded = process_.state() == QProcess::NotRunning || process_.waitForFinished(patience);
        if (!hasEnded) throw NotDone{"an application does not end"};
    }

private:
    /// Collects what it was told until another message comes, and returns that one.
    QStringList await() {
        QStringList words = readLine();
        for (; words.value(0) == "told"; words = readLine())
            told_ += words;
        if (words.value(0) == "refused") throw NotDone{words.value(1).toStdString()};
        return words;
    }
    QStringList readLine() {
        while (!process_.canReadLine()) {
            if (process_.waitForReadyRead(patience)) continue;
            throw NotDone{"an application ended, or says nothing: " + process_.errorString().toStdString()};
        }
        return wordsIn(process_.readLine());
    }

    QProcess process_;
    QString name_;
    QList<QStringList> told_;
};

/// The service identifies the caller itself.
class BusMac final : public Mac {
public:
    BusMac(const QString& programs, const QStringList& command, qint64 timeout)
        : bus_{programs}, submit_{programs + "/submit"}, commandBundle_{bundleOfCommand(command)}, timeout_{timeout} {
        QObject::connect(&control_, &Control::Changed, &changes_, &QEventLoop::quit);
        QObject::connect(&presence_, &ServicePresence::came, &changes_, &QEventLoop::quit);
        QObject::connect(&presence_, &ServicePresence::went, &changes_, &QEventLoop::quit);
        if (!command.isEmpty()) command_.emplace(command, bus_.address(), bus_.folder() + "/command");
        if (command_) QObject::connect(&command_->process(), &QProcess::finished, &changes_, &QEventLoop::quit);
        QDir{}.mkpath(real("/Applications"));
        act({plainWords({"applications", "/Applications"}), {}});
    }

    WordList copies(const std::string& identifier) override {
        WordList found;
        for (const CopyEntry& copy : asked(&Control::ListCopies)) {
            if (copy.identifier.toStdString() != identifier) continue;
            found.push_back((copy.shortVersion + "/" + copy.version + " " + copy.state).toStdString());
        }
        return found;
    }
    WordList requests() override {
        WordList found;
        for (const RequestEntry& request : openRequests())
            found.push_back((request.identifier + " " + request.stage).toStdString());
        return found;
    }

    // The command
    bool await(const std::function<bool()>& holds) override {
        const QDeadlineTimer deadline{timeout_};
        while (!holds()) {
            if (!command_ || deadline.hasExpired()) return false;
            if (command_->hasEnded()) {
                rest();
                return holds();
            }
            QTimer timer;
            timer.callOnTimeout(&changes_, &QEventLoop::quit);
            timer.start(std::chrono::milliseconds{deadline.remainingTime()});
            changes_.exec();
        }
        return true;
    }
    void startCommand() override {
        if (!command_) return Mac::startCommand();
        stopCommand();
        command_->start();
    }
    void stopCommand() override {
        if (!command_) return;
        const auto open = openRequests();
        command_->stop();
        for (const RequestEntry& request : open)
            if (request.application == commandBundle_) awaitDeparture(request.client);
        rest();
    }
    int statusOfCommand() override {
        if (!command_) return Mac::statusOfCommand();
        if (await([this] { return command_->hasEnded(); })) return command_->takeStatus();
        throw NotDone{"the command is still running"};
    }

private:
    using Control = ComKelvraSimulator1ControlInterface;

    // The disk
    /// Its path on the real disk.
    QString real(const std::string& path) const { return bus_.folder() + "/disk" + QString::fromStdString(path); }
    void write(const BundleOnDisk& bundle) override { writeBundle(bundle, real(bundle.path), submit_); }
    void remove(const BundleOnDisk& bundle) override { QDir{real(bundle.path)}.removeRecursively(); }

    // Applications
    std::string start(const std::string& application) override {
        const QString program = programOf(real(bundleOf(application).path));
        processes_[application] = std::make_unique<ClientProcess>(program, bus_.address());
        return processes_[application]->name().toStdString();
    }
    void end(const std::string& application) override {
        const auto process = std::move(processes_.extract(application).mapped());
        process->quit();
        awaitDeparture(process->name());
    }
    /// Once the bus says that it has left, the service has been told.
    void awaitDeparture(const QString& client) const {
        const QDeadlineTimer deadline{patience};
        while (bus_.connection().interface()->isServiceRegistered(client))
            if (deadline.hasExpired()) throw NotDone{"an application does not leave the bus"};
    }
    void submit(const std::string& application, const std::string& token, const Ask& ask) override {
        const QString kind = QString::fromStdString(std::string{nameOf(ask.kind)});
        const QString identifier = QString::fromStdString(ask.identifier);
        processes_.at(application)->order({"submit", QString::fromStdString(token), kind, identifier});
    }
    void reply(const std::string& application, const std::string& token, bool replace) override {
        processes_.at(application)->order({"answer", QString::fromStdString(token), replace ? "replace" : "cancel"});
    }

    // The person and the machine
    void act(const Saying& saying) override {
        const bool namesFolders = names(saying.words, Verb::Names::folders);
        answered(callToDo(control_, {namesFolders ? withRealFolders(saying.words) : saying.words, saying.contents}));
    }
    std::vector<Word> withRealFolders(const std::vector<Word>& words) const {
        std::vector<Word> there;
        for (const Word& word : words) {
            const bool isFolder = word.text.rfind('/', 0) == 0;
            there.push_back({isFolder ? real(word.text).toStdString() : word.text, word.isQuoted});
            if (word.text == "/Applications" && command_)
                there.push_back({QFileInfo{commandBundle_}.path().toStdString(), true});
        }
        return there;
    }

    // What comes of it
    void rest() override {
        do
            awaitStandstill();
        while (listen());
    }
    /// The service takes a step between any two of our questions, if one is due. So it has come to rest when it says
    /// the same twice, and no request is in a stage that it leaves by itself.
    void awaitStandstill() {
        QStringList before;
        while (true) {
            const auto open = openRequests();
            QStringList now{"asked"};
            for (const RequestEntry& request : open)
                now += QString::number(request.number) + ' ' + request.stage;
            if (now == before && std::none_of(open.begin(), open.end(), isWorking)) return;
            before = std::move(now);
        }
    }
    /// Passes on what the applications heard; returns whether there was anything.
    bool listen() {
        bool isTold = false;
        for (const auto& [application, process] : processes_) {
            for (const QStringList& told : process->hear()) {
                tell(application, told.value(1).toStdString(), told.value(2).toStdString());
                isTold = true;
            }
        }
        return isTold;
    }
    QList<RequestEntry> openRequests() { return asked(&Control::ListRequests); }
    /// Asks the service, and asks again if it dies meanwhile.
    template <typename Value>
    Value asked(QDBusPendingReply<Value> (Control::*question)()) {
        for (int deaths = 0; deaths < mostDeaths; ++deaths) {
            auto reply = (control_.*question)();
            reply.waitForFinished();
            if (reply.isError() && reply.error().type() == QDBusError::NoReply) continue;
            return answered(reply);
        }
        throw NotDone{"the service dies again and again"};
    }
    /// Waits for the answer of a call.
    template <typename Value>
    Value answered(QDBusPendingReply<Value> reply) const {
        reply.waitForFinished();
        if (!reply.isError()) return reply.value();
        const std::string message = reply.error().message().toStdString();
        if (!cannotBeStarted(reply.error())) throw NotDone{message};
        const std::string complaint = bus_.lastComplaint().toStdString();
        throw NotDone{"the service cannot be started: " + (complaint.empty() ? message : complaint)};
    }

    PrivateBus bus_;
    QString submit_;
    Control control_{serviceName, objectPath, bus_.connection()};
    std::map<std::string, std::unique_ptr<ClientProcess>> processes_;
    QString commandBundle_;
    std::optional<Command> command_;
    qint64 timeout_;
    ServicePresence presence_{bus_.connection()};
    /// Ends when something may have changed.
    QEventLoop changes_;
};

} // namespace

std::unique_ptr<Mac> newBusMac(const QString& programs, const QStringList& command, qint64 timeout) {
    return std::make_unique<BusMac>(programs, command, timeout);
}

} // namespace simulator::player
