#include "simulator/sysextd/BusObject.h"

#include "simulator/core/Verbs.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QFile>
#include <QMap>
#include <QVariant>

#include <array>
#include <cstdint>
#include <tuple>
#include <utility>
#include <variant>

namespace simulator {

namespace {

/// The names of the error replies, in the order of the refusals' kinds.
constexpr std::array refusals{"NothingWaiting", "UnknownIdentifier", "InvalidArgument", "LimitExceeded",
                              "ForbiddenByProfile"};

QString text(std::string_view view) {
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
}

CopyEntry entryOf(const Copy& copy) {
    const CopyStateRow& row = describe(copy.state);
    const Extension& extension = copy.extension;
    return {text(nameOf(extension.category)),
            text(extension.team),
            text(extension.identifier),
            text(copy.version.shortVersion),
            text(copy.version.version),
            text(extension.name),
            text(row.text),
            text(row.condition),
            row.enabledStar,
            row.activeStar,
            copy.number,
            text(copy.application)};
}

/// The name of the signal, and its arguments after the token.
struct SignalOfBody {
    QVariantList operator()(std::monostate) const { return {QString{}}; }
    QVariantList operator()(const ReplacementAsked& asked) const {
        return {"ReplacementAsked", QVariant::fromValue(asked.existing), QVariant::fromValue(asked.replacement)};
    }
    QVariantList operator()(const NeedsApproval&) const { return {"NeedsApproval"}; }
    QVariantList operator()(const Finished& finished) const { return {"Finished", qlonglong{finished.result}}; }
    QVariantList operator()(const Failure& failure) const {
        return {"Failed", text(failure.domain), qlonglong{failure.code}, text(failure.description)};
    }
    QVariantList operator()(const FoundProperties& found) const {
        return {"FoundProperties", QVariant::fromValue(QList<CopyRecord>{found.copies.begin(), found.copies.end()})};
    }
};

/// A word after "--" is text, even if it looks like an option.
std::vector<Word> wordsIn(const QStringList& texts) {
    std::vector<Word> words;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        const bool isQuoted = *text == "--" && text + 1 != texts.end();
        if (isQuoted) ++text;
        words.push_back({text->toStdString(), isQuoted});
    }
    return words;
}

/// A message can quote any text that a caller sent.
QString oneShortLine(const std::string& message) {
    constexpr qsizetype longest = 200;
    QString line = QString::fromStdString(message).left(longest + 1);
    for (QChar& character : line)
        if (character.category() == QChar::Other_Control) character = ' ';
    return line.size() > longest ? line.left(longest - 1) + QChar{0x2026} : line;
}

} // namespace

QList<CopyEntry> copyEntries(const State& state) {
    QMap<std::tuple<std::string_view, std::string_view, std::int64_t>, CopyEntry> sorted;
    for (const auto& [number, copy] : state.copies)
        sorted[{nameOf(copy.extension.category), copy.extension.identifier, number}] = entryOf(copy);
    return sorted.values();
}

QDBusMessage messageOf(const Answer& answer) {
    QVariantList signal = std::visit(SignalOfBody{}, answer.body);
    const QString name = std::exchange(signal.front(), text(answer.token)).toString();
    QDBusMessage message = QDBusMessage::createTargetedSignal(text(answer.client), objectPath, interfaceName, name);
    message.setArguments(signal);
    return message;
}

BusObject::BusObject(QDBusConnection bus, Service& service) : bus_{std::move(bus)}, service_{service} {
    connect(&service_, &Service::answered, this, [this](const Answer& answer) { bus_.send(messageOf(answer)); });
    connect(&service_, &Service::happened, this, [this](const simulator::Event& event) {
        emit Event(event.time, text(event.identifier), text(event.text), text(event.application));
    });
    connect(&service_, &Service::changed, this, &BusObject::Changed);
    connect(&service_, &Service::restarting, this, &BusObject::Restarting);
    connect(&service_, &Service::settled, this, [this] {
        for (const QDBusMessage& reply : std::exchange(replies_, {}))
            bus_.send(reply);
    });
    // The bus reads messages in order, so when it answers this call, it has all earlier ones.
    connect(&service_, &Service::dying, this, [this] { bus_.interface()->isServiceRegistered(serviceName); });
    const QStringList whoeverLeaves{QString{}, QString{}, QString{""}};
    bus_.connect("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                 whoeverLeaves, {}, this, SLOT(clientLeft(QString)));
}

void BusObject::clientLeft(const QString& name) {
    service_.perform([&](Machine& machine) -> Verdict {
        machine.clientLeft(name.toStdString());
        return done;
    });
}

std::string BusObject::bundleOf(const QString& client) const {
    const QDBusReply<uint> process = bus_.interface()->servicePid(client);
    if (!process.isValid()) return {};
    return bundleOfFile(QFile::symLinkTarget(QString{"/proc/%1/exe"}.arg(process.value())).toStdString());
}

void BusObject::answer(const Verdict& verdict, const QVariantList& values) {
    setDelayedReply(true);
    if (!message().isReplyRequired()) return;
    if (!verdict) return replies_.push_back(message().createReply(values));
    const QString name = refusals.at(static_cast<std::size_t>(verdict->kind));
    replies_.push_back(message().createErrorReply(errorPrefix + name, oneShortLine(verdict->message)));
}

// What applications ask ----------------------------------------------------------------------------------------------

void BusObject::Submit(const QString& token, const QString& kind, const QString& identifier) {
    answer(service_.perform([&](Machine& machine) -> Verdict {
        const auto known = requestKindNamed(kind.toStdString());
        if (!known) return invalid("unknown kind of request " + inQuotes(kind.toStdString()));
        const QString client = message().service();
        return machine.submit(
            {client.toStdString(), token.toStdString(), bundleOf(client), *known, identifier.toStdString()});
    }));
}

void BusObject::AnswerReplacement(const QString& token, const QString& action) {
    answer(service_.perform([&](Machine& machine) -> Verdict {
        const bool isKnown = action == "replace" || action == "cancel";
        if (!isKnown) return invalid(inQuotes(action.toStdString()) + " is neither replace nor cancel");
        return machine.answerReplacement(message().service().toStdString(), token.toStdString(), action == "replace");
    }));
}

// What is there ------------------------------------------------------------------------------------------------------

QList<CopyEntry> BusObject::ListCopies() {
    service_.settle();
    return copyEntries(service_.machine().state());
}

QList<RequestEntry> BusObject::ListRequests() {
    service_.settle();
    QList<RequestEntry> entries;
    for (const auto& [number, request] : service_.machine().requests())
        entries.push_back({number, text(request.client), text(request.token), text(request.application),
                           text(nameOf(request.kind)), text(request.identifier), text(nameOf(request.stage)),
                           request.since});
    return entries;
}

QStringList BusObject::ListIdentifiers() {
    service_.settle();
    QStringList identifiers;
    for (const auto& [identifier, extension] : service_.machine().extensions())
        identifiers.push_back(text(identifier));
    return identifiers;
}

// The person and the machine -----------------------------------------------------------------------------------------

QByteArray BusObject::Do(const QStringList& words, const QByteArray& contents) {
    std::string said;
    const Verdict verdict = service_.perform([&](Machine& machine) -> Verdict {
        try {
            const Outcome outcome = understood({wordsIn(words), contents.toStdString()})(machine);
            if (const auto* const refusal = std::get_if<Refusal>(&outcome)) return *refusal;
            said = std::get<std::string>(outcome);
            return done;
        } catch (const NotUnderstood& problem) {
            return invalid(problem.what());
        }
    });
    answer(verdict, {QByteArray::fromStdString(said)});
    return {};
}

} // namespace simulator
