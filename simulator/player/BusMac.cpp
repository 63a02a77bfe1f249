#include "simulator/player/BusMac.h"

#include "simulator/disk/Seal.h"

#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
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

bool isOfTheStart(const QDBusError& error) {
    return error.name().startsWith("org.freedesktop.DBus.Error.Spawn.");
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
    if (!QFile::copy(program, programOf(folder))) {
        throw NotDone{program.toStdString() + ": it cannot be copied into an application"};
    }
    if (bundle.team.empty()) return;
    Dictionary entitlements;
    if (bundle.mayInstallExtensions) entitlements["com.apple.developer.system-extension.install"] = true;
    seal(folder, bundle.team, entitlements);
}

QString programOf(const QString& folder) {
    return folder + "/Contents/MacOS/submit";
}

// An application's process -------------------------------------------------------------------------------------------

QByteArray lineOf(const QStringList& words) {
    return QJsonDocument{QJsonArray::fromStringList(words)}.toJson(QJsonDocument::Compact) + '\n';
}

QStringList wordsIn(const QByteArray& line) {
    return QJsonDocument::fromJson(line).toVariant().toStringList();
}

ClientProcess::ClientProcess(const QString& program, const QString& busAddress) {
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("DBUS_SESSION_BUS_ADDRESS", busAddress);
    process_.setProcessEnvironment(environment);
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.start(program, QStringList{});
    name_ = await().value(1);
}

ClientProcess::~ClientProcess() {
    process_.kill();
    process_.waitForFinished(patience);
}

void ClientProcess::order(const QStringList& words) {
    process_.write(lineOf(words));
    await();
}

std::vector<ClientProcess::Told> ClientProcess::hear() {
    order({"hear"});
    return std::exchange(told_, {});
}

void ClientProcess::quit() {
    process_.closeWriteChannel();
    const bool hasEnded = process_.state() == QProcess::NotRunning || process_.waitForFinished(patience);
    if (!hasEnded) throw NotDone{"an application does not end"};
}

QStringList ClientProcess::await() {
    QStringList words = readLine();
    for (; words.value(0) == "told"; words = readLine())
        told_.push_back({words.value(1), words.value(2)});
    if (words.value(0) == "refused") throw NotDone{words.value(1).toStdString()};
    return words;
}

QStringList ClientProcess::readLine() {
    while (!process_.canReadLine()) {
        if (process_.waitForReadyRead(patience)) continue;
        throw NotDone{"an application ended, or says nothing: " + process_.errorString().toStdString()};
    }
    return wordsIn(process_.readLine());
}

// The Mac ------------------------------------------------------------------------------------------------------------

template <typename Value>
Value BusMac::answered(QDBusPendingReply<Value> reply) const {
    reply.waitForFinished();
    if (!reply.isError()) return reply.value();
    const std::string message = reply.error().message().toStdString();
    if (!isOfTheStart(reply.error())) throw NotDone{message};
    const std::string complaint = bus_.lastComplaint().toStdString();
    throw NotDone{"the service cannot be started: " + (complaint.empty() ? message : complaint)};
}

BusMac::BusMac(const QString& programs, const QStringList& command, qint64 timeout)
    : bus_{programs},
      submit_{programs + "/submit"},
      control_{serviceName, objectPath, bus_.connection()},
      commandBundle_{bundleOfCommand(command)},
      timeout_{timeout} {
    QObject::connect(&control_, &Control::Changed, &changes_, &QEventLoop::quit);
    QObject::connect(&presence_, &ServicePresence::came, &changes_, &QEventLoop::quit);
    QObject::connect(&presence_, &ServicePresence::went, &changes_, &QEventLoop::quit);
    if (!command.isEmpty()) command_.emplace(command, bus_.address(), bus_.folder() + "/command");
    if (command_) QObject::connect(&command_->process(), &QProcess::finished, &changes_, &QEventLoop::quit);
    QDir{}.mkpath(real("/Applications"));
    act({plainWords({"applications", "/Applications"}), {}});
}

// The disk -----------------------------------------------------------------------------------------------------------

QString BusMac::real(const std::string& path) const {
    return bus_.folder() + "/disk" + QString::fromStdString(path);
}

void BusMac::write(const BundleOnDisk& bundle) {
    writeBundle(bundle, real(bundle.path), submit_);
}

void BusMac::remove(const BundleOnDisk& bundle) {
    QDir{real(bundle.path)}.removeRecursively();
}

// Applications -------------------------------------------------------------------------------------------------------

std::string BusMac::start(const std::string& application) {
    const QString program = programOf(real(bundleOf(application).path));
    processes_[application] = std::make_unique<ClientProcess>(program, bus_.address());
    return processes_[application]->name().toStdString();
}

void BusMac::end(const std::string& application) {
    const auto process = std::move(processes_.extract(application).mapped());
    process->quit();
    awaitDeparture(process->name());
}

void BusMac::awaitDeparture(const QString& client) const {
    const QDeadlineTimer deadline{patience};
    while (bus_.connection().interface()->isServiceRegistered(client))
        if (deadline.hasExpired()) throw NotDone{"an application does not leave the bus"};
}

void BusMac::submit(const std::string& application, const std::string& token, const Ask& ask) {
    const QString kind = QString::fromStdString(std::string{nameOf(ask.kind)});
    const QString identifier = QString::fromStdString(ask.identifier);
    processes_.at(application)->order({"submit", QString::fromStdString(token), kind, identifier});
}

void BusMac::reply(const std::string& application, const std::string& token, bool replace) {
    processes_.at(application)->order({"answer", QString::fromStdString(token), replace ? "replace" : "cancel"});
}

// The person and the machine -----------------------------------------------------------------------------------------

void BusMac::act(const Saying& saying) {
    const bool namesFolders = names(saying.words, Verb::Names::folders);
    answered(callToDo(control_, {namesFolders ? withRealFolders(saying.words) : saying.words, saying.contents}));
}

std::vector<Word> BusMac::withRealFolders(const std::vector<Word>& words) const {
    std::vector<Word> there;
    for (const Word& word : words) {
        const bool isFolder = word.text.rfind('/', 0) == 0;
        there.push_back({isFolder ? real(word.text).toStdString() : word.text, word.isQuoted});
        if (word.text == "/Applications" && command_)
            there.push_back({QFileInfo{commandBundle_}.path().toStdString(), true});
    }
    return there;
}

// The command --------------------------------------------------------------------------------------------------------

void BusMac::startCommand() {
    if (!command_) return Mac::startCommand();
    stopCommand();
    command_->start();
}

void BusMac::stopCommand() {
    if (!command_) return;
    const auto open = openRequests();
    command_->stop();
    for (const RequestEntry& request : open)
        if (request.application == commandBundle_) awaitDeparture(request.client);
    rest();
}

int BusMac::statusOfCommand() {
    if (!command_) return Mac::statusOfCommand();
    if (await([this] { return command_->hasEnded(); })) return command_->takeStatus();
    throw NotDone{"the command is still running"};
}

bool BusMac::await(const std::function<bool()>& holds) {
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

// What comes of it ---------------------------------------------------------------------------------------------------

void BusMac::rest() {
    do
        awaitStandstill();
    while (listen());
}

/// The service takes a step between any two of our questions, if one is due. So it has come to rest when it says the
/// same twice, and no request is in a stage that it leaves by itself.
void BusMac::awaitStandstill() {
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

template <typename Value>
Value BusMac::asked(QDBusPendingReply<Value> (Control::*question)()) {
    for (int deaths = 0; deaths < mostDeaths; ++deaths) {
        auto reply = (control_.*question)();
        reply.waitForFinished();
        if (reply.isError() && reply.error().type() == QDBusError::NoReply) continue;
        return answered(reply);
    }
    throw NotDone{"the service dies again and again"};
}

bool BusMac::listen() {
    bool isTold = false;
    for (const auto& [application, process] : processes_) {
        for (const ClientProcess::Told& told : process->hear()) {
            tell(application, told.token.toStdString(), told.text.toStdString());
            isTold = true;
        }
    }
    return isTold;
}

WordList BusMac::copies(const std::string& identifier) {
    WordList found;
    for (const CopyEntry& copy : asked(&Control::ListCopies)) {
        if (copy.identifier.toStdString() != identifier) continue;
        found.push_back((copy.shortVersion + "/" + copy.version + " " + copy.state).toStdString());
    }
    return found;
}

WordList BusMac::requests() {
    WordList found;
    for (const RequestEntry& request : openRequests())
        found.push_back((request.identifier + " " + request.stage).toStdString());
    return found;
}

} // namespace simulator::player
