#include "simulator/sysextd/BusObject.h"

#include "simulator/bus/Names.h"
#include "simulator/core/Verbs.h"
#include "simulator/disk/RealDisk.h"
#include "simulator/sysextd/Conversions.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QFile>

#include <variant>

namespace simulator {

namespace {

/// A word behind "--" is a text, whatever it looks like.
std::vector<Word> wordsIn(const QStringList& texts) {
    std::vector<Word> words;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        const bool isQuoted = *text == "--" && text + 1 != texts.end();
        if (isQuoted) ++text;
        words.push_back({text->toStdString(), isQuoted});
    }
    return words;
}

/// A message may quote what a caller sent, of any length and with anything in it.
QString oneShortLine(const std::string& message) {
    constexpr qsizetype longest = 200;
    QString line = QString::fromStdString(message).left(longest + 1);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control) character = ' ';
    }
    return line.size() > longest ? line.left(longest - 1) + QChar{0x2026} : line;
}

} // namespace

BusObject::BusObject(const QDBusConnection& bus, Service& service) : bus_{bus}, service_{service} {
    connect(&service_, &Service::answered, this, &BusObject::send);
    connect(&service_, &Service::happened, this, &BusObject::tell);
    connect(&service_, &Service::changed, this, &BusObject::Changed);
    connect(&service_, &Service::restarting, this, &BusObject::Restarting);
    connect(&service_, &Service::dying, this, &BusObject::flush);
    const QStringList whoeverLeaves{QString{}, QString{}, QString{""}};
    bus_.connect("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameOwnerChanged",
                 whoeverLeaves, {}, this, SLOT(clientLeft(QString)));
}

void BusObject::send(const Answer& answer) {
    bus_.send(messageOf(answer));
}

/// The bus takes what it is sent in order: once it answers, it has everything.
void BusObject::flush() {
    bus_.interface()->isServiceRegistered(serviceName);
}

void BusObject::tell(const simulator::Event& event) {
    emit Event(event.time, QString::fromStdString(event.identifier), QString::fromStdString(event.text));
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

void BusObject::refuse(const Refusal& refusal) {
    sendErrorReply(errorName(refusal.kind), oneShortLine(refusal.message));
}

void BusObject::perform(const std::function<Verdict(Machine&)>& deed) {
    if (const Verdict verdict = service_.perform(deed)) refuse(*verdict);
}

// What applications ask ----------------------------------------------------------------------------------------------

void BusObject::Submit(const QString& token, const QString& kind, const QString& identifier) {
    perform([&](Machine& machine) -> Verdict {
        const auto known = requestKindNamed(kind.toStdString());
        if (!known) return invalid("'" + kind.toStdString() + "' is no kind of request");
        const QString client = message().service();
        return machine.submit(
            {client.toStdString(), token.toStdString(), bundleOf(client), *known, identifier.toStdString()});
    });
}

void BusObject::AnswerReplacement(const QString& token, const QString& action) {
    perform([&](Machine& machine) -> Verdict {
        const bool isKnown = action == "replace" || action == "cancel";
        if (!isKnown) return invalid("'" + action.toStdString() + "' is neither replace nor cancel");
        return machine.answerReplacement(message().service().toStdString(), token.toStdString(), action == "replace");
    });
}

// What is there ------------------------------------------------------------------------------------------------------

QList<CopyEntry> BusObject::ListCopies() {
    return copyEntries(service_.machine().state());
}

QList<RequestEntry> BusObject::ListRequests() {
    return requestEntries(service_.machine());
}

QStringList BusObject::ListIdentifiers() {
    QStringList identifiers;
    for (const std::string& identifier : service_.machine().identifiers()) {
        identifiers.push_back(QString::fromStdString(identifier));
    }
    return identifiers;
}

// The person and the machine -----------------------------------------------------------------------------------------

QByteArray BusObject::Do(const QStringList& words, const QByteArray& contents) {
    std::string said;
    perform([&](Machine& machine) -> Verdict {
        try {
            const Outcome outcome = understood({wordsIn(words), contents.toStdString()})(machine);
            if (const auto* const refusal = std::get_if<Refusal>(&outcome)) return *refusal;
            said = std::get<std::string>(outcome);
            return done;
        } catch (const NotUnderstood& problem) {
            return invalid(problem.what());
        }
    });
    return QByteArray::fromStdString(said);
}

} // namespace simulator
