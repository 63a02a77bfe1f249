#include "simulator/play/BusMac.h"

#include "simulator/bus/Names.h"
#include "simulator/core/Request.h"
#include "simulator/play/AnswerJson.h"
#include "simulator/play/Answered.h"
#include "simulator/play/BundleWriter.h"
#include "simulator/play/Deeds.h"

#include <QDir>

#include <algorithm>
#include <array>
#include <utility>

namespace simulator::play {

namespace {

/// How often in a row the service may die before it is given up.
constexpr int mostDeaths = 5;

/// In these a request goes on by itself; a delayed one does once it is due.
constexpr std::array working{Stage::checking, Stage::validating, Stage::staging, Stage::removing};

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

bool isWorking(const RequestEntry& request) {
    return std::any_of(working.begin(), working.end(),
                       [&](const Stage stage) { return request.stage == text(nameOf(stage)); });
}

QString createdFolder(const QTemporaryDir& disk, const QString& name) {
    const QString path = disk.filePath(name);
    if (!QDir{}.mkpath(path)) throw scenario::NotDone{path.toStdString() + ": it cannot be made"};
    return path;
}

} // namespace

BusMac::BusMac(const QDBusConnection& bus, QString submit, std::function<bool()> mustEnd)
    : control_{serviceName, objectPath, bus},
      submit_{std::move(submit)},
      mustEnd_{std::move(mustEnd)},
      settings_{control_, createdFolder(disk_, "Applications")},
      departures_{bus} {
}

// Applications -------------------------------------------------------------------------------------------------------

QString BusMac::folderFor(const std::string& path) const {
    return disk_.path() + QString::fromStdString(path);
}

void BusMac::put(const std::string& name, const BundleOnDisk& bundle) {
    Application& application = applications_[name];
    end(application);
    if (!application.folder.isEmpty()) QDir{application.folder}.removeRecursively();
    application.folder = folderFor(bundle.path);
    writeBundle(bundle, application.folder, submit_);
    rest();
}

ClientProcess& BusMac::processOf(Application& application) {
    if (!application.process) {
        application.process = std::make_unique<ClientProcess>(programOf(application.folder));
        departures_.watch(application.process->name());
    }
    return *application.process;
}

void BusMac::ask(const scenario::Ask& ask) {
    Application& application = applications_.at(ask.application);
    const QString token = QString::number(++lastToken_);
    application.asked[token] = ask;
    processOf(application).submit(token, ask.kind, QString::fromStdString(ask.identifier));
    rest();
}

void BusMac::answer(const scenario::AnswerQuestion& answer) {
    Application& application = applications_.at(answer.application);
    const auto isAsked = [&](const RequestEntry& request) {
        const auto asked = application.asked.find(request.token);
        return application.process && request.client == application.process->name() &&
               request.stage == text(nameOf(Stage::replacement)) && asked != application.asked.end() &&
               asked->second.request == answer.request;
    };
    const auto open = openRequests();
    const auto found = std::find_if(open.begin(), open.end(), isAsked);
    if (found == open.end()) throw scenario::NotDone{"no question about " + answer.request + " is open"};
    application.process->answer(found->token, answer.replace);
    rest();
}

void BusMac::end(Application& application) {
    if (!application.process) return;
    const auto process = std::exchange(application.process, nullptr);
    process->quit();
    departures_.await(process->name());
}

void BusMac::endAll() {
    for (auto& [name, application] : applications_) {
        if (!application.process) continue;
        const auto process = std::exchange(application.process, nullptr);
        process->awaitEnd();
        departures_.await(process->name());
    }
}

void BusMac::quit(const std::string& application) {
    end(applications_.at(application));
    rest();
}

std::optional<scenario::Heard> BusMac::hear(const std::string& application) {
    auto& heard = applications_.at(application).heard;
    if (heard.empty()) return std::nullopt;
    scenario::Heard oldest = std::move(heard.front());
    heard.pop_front();
    return oldest;
}

// The person and the machine -----------------------------------------------------------------------------------------

void BusMac::perform(const scenario::Deed& deed) {
    answered(callOf(control_, deed));
    if (std::holds_alternative<scenario::Restart>(deed)) endAll();
    rest();
}

// What comes of it ---------------------------------------------------------------------------------------------------

void BusMac::rest() {
    bool hasAnswered = true;
    while (hasAnswered) {
        awaitStandstill();
        hasAnswered = false;
        for (auto& [name, application] : applications_) {
            if (listen(application)) hasAnswered = true;
        }
    }
}

/// The service takes a step between any two of our questions, if one is due. So it has come to rest when it says the
/// same twice, and no request is in a stage that it leaves by itself.
void BusMac::awaitStandstill() {
    QStringList before;
    while (true) {
        if (mustEnd_()) throw scenario::NotDone{"it was told to end"};
        const auto open = openRequests();
        QStringList now{"asked"};
        for (const RequestEntry& request : open)
            now += QString::number(request.number) + ' ' + request.stage;
        if (now == before && std::none_of(open.begin(), open.end(), isWorking)) return;
        before = std::move(now);
    }
}

QList<RequestEntry> BusMac::openRequests() {
    for (int deaths = 0; deaths < mostDeaths; ++deaths) {
        auto reply = control_.ListRequests();
        reply.waitForFinished();
        if (reply.isError() && reply.error().type() == QDBusError::NoReply) continue;
        return answered(reply).value();
    }
    throw scenario::NotDone{"the service dies again and again"};
}

bool BusMac::listen(Application& application) {
    bool hasAnswered = false;
    if (!application.process) return hasAnswered;
    for (const QJsonObject& said : application.process->hear()) {
        const QString token = said["token"].toString();
        const scenario::Ask& ask = application.asked.at(token);
        const AnswerBody body = answerOf(said);
        application.heard.push_back({ask.request, body});
        if (!std::holds_alternative<ReplacementAsked>(body) || ask.reply == scenario::Ask::Reply::later) continue;
        application.process->answer(token, ask.reply == scenario::Ask::Reply::replace);
        hasAnswered = true;
    }
    return hasAnswered;
}

// What is there ------------------------------------------------------------------------------------------------------

std::vector<scenario::CopyThere> BusMac::copies(const std::string& identifier) {
    std::vector<scenario::CopyThere> found;
    for (const CopyEntry& copy : answered(control_.ListCopies()).value()) {
        if (copy.identifier.toStdString() != identifier) continue;
        const auto state = copyStateWithText(copy.state.toStdString());
        if (!state) throw scenario::NotDone{"the service tells of an unknown state: " + copy.state.toStdString()};
        found.push_back({{copy.shortVersion.toStdString(), copy.version.toStdString()}, *state});
    }
    return found;
}

std::vector<scenario::RequestThere> BusMac::requests() {
    std::vector<scenario::RequestThere> found;
    for (const RequestEntry& request : openRequests())
        found.push_back({request.identifier.toStdString(), request.stage.toStdString()});
    return found;
}

} // namespace simulator::play
