#include "simulator/sysextctl/Commands.h"

#include "simulator/sysextctl/Listening.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cctype>
#include <iterator>

namespace simulator::ctl {

namespace {

using Control = ComKelvraSimulator1ControlInterface;

QDBusConnection sessionBus() {
    const auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) throw CommandFailure{exitCode::notDone, "there is no session bus"};
    return bus;
}

// What only looks ----------------------------------------------------------------------------------------------------

Run list(Words& words) {
    const bool isJson = words.takeFlag("--json");
    words.expect(0, 1);
    QString category;
    if (!words.isAtEnd()) {
        const std::string word = words.take("a category");
        category = categoryNamed(word);
        if (category.isEmpty()) words.reject("a category", word, shortCategories());
    }
    return [isJson, category] {
        Control control{serviceName, objectPath, sessionBus()};
        auto copies = answered(control.ListCopies());
        copies.removeIf([&](const CopyEntry& copy) { return !category.isEmpty() && copy.category != category; });
        say(isJson ? asJson(copies) : asText(copies));
    };
}

Run requests(Words& words) {
    const bool isJson = words.takeFlag("--json");
    words.expect(0, 0);
    return [isJson] {
        Control control{serviceName, objectPath, sessionBus()};
        const auto open = answered(control.ListRequests());
        say(isJson ? asJson(open) : asText(open));
    };
}

Run wait(Words& words) {
    WaitFor wanted;
    wanted.timeout = words.takeDurationOption("--timeout").value_or(30'000);
    words.expect(2, 2);
    wanted.identifier = QString::fromStdString(words.take("an extension identifier"));
    WordList states = wordsForStates();
    states.insert(states.begin(), "absent");
    wanted.state = QString::fromStdString(words.takeOneOf("a state", states));
    return [wanted] { Waiting{sessionBus(), wanted}.run(); };
}

Run watch(Words& words) {
    const bool isJson = words.takeFlag("--json");
    words.expect(0, 0);
    return [isJson] { Watching{sessionBus(), isJson}.run(); };
}

constexpr std::string_view thatLook = "State and events";

const Command commandsThatLook[]{
    {{thatLook, "list", "[CATEGORY] [--json]", "prints every copy of every extension",
      R"(CATEGORY is cmio, driver_extension, endpoint_security, or network_extension. The stars say whether a copy is enabled
and whether it runs. With --json, prints an array of objects with category, team, identifier, shortVersion, version,
name, state, condition (the state in one word), enabled, active, number (higher is younger), and application (the bundle
that the copy came from).
)"},
     list},
    {{thatLook, "requests", "[--json]", "prints the open requests of applications",
      R"(One line for each request, with columns separated by tabs: its number; activation, deactivation, or properties; the
extension; when it was submitted, in seconds of the simulated clock; the application; and its stage:
  delayed        a fault delays it until the clock is advanced
  checking       the service checks whether the application may make it
  validating     the service validates the extension's files
  replacement    the application is asked whether the new copy may replace the old one
  staging        the service prepares the new copy
  user           waits for "allow" or "deny"
  authorization  waits for "authorize" or "refuse"
  removing       the service removes the copies
  silent         is never answered
With --json, prints an array of objects with number, kind, identifier, since and sinceMilliseconds (both in
milliseconds), application, stage, client (the application's name on the bus), and token (its name for the request).
)"},
     requests},
    {{thatLook, "wait", "ID STATE [--timeout TIME]", "waits until a copy is in a state",
      R"(Any copy of ID counts. Exits with 1 if none reaches the state within TIME: a number with ms, s, m, h, or d, in
seconds without a unit, and 30 s if left out. STATE is absent, which means no copy, or one of these, in either wording:
)" + listOfStates()},
     wait},
    {{thatLook, "watch", "[--json]", "prints events until it is interrupted",
      R"(One line for each event, with columns separated by tabs: the simulated clock in seconds; the extension; what
happened, such as "2.1/2105: activated waiting for user -> activated enabled" or "activation finished 0"; and the
application that made the request, or that the copy came from. A hyphen means none. With --json, each line is an object
with timeMilliseconds, identifier, event, and application, where null means none.
)"},
     watch},
};

// The verbs of the machine -------------------------------------------------------------------------------------------

std::string contentsOf(const std::string& path) {
    const auto name = QString::fromStdString(path);
    QFile file{name};
    if (!file.open(QIODevice::ReadOnly))
        throw CommandFailure{exitCode::notUnderstood,
                             QStringLiteral("cannot read %1: %2").arg(name, file.errorString())};
    const auto contents = file.read(limits::profile + 1).toStdString();
    if (contents.empty() || contents.size() > limits::profile)
        throw CommandFailure{exitCode::notUnderstood, QStringLiteral("%1 is not a profile").arg(name)};
    return contents;
}

std::string absolute(const std::string& folder) {
    const QString path = QDir::cleanPath(QDir::current().absoluteFilePath(QString::fromStdString(folder)));
    if (!QDir{path}.exists()) throw CommandFailure{exitCode::notUnderstood, path + ": no such folder"};
    return path.toStdString();
}

/// What is typed, as it is said to the machine: with what is in a file, and where folders lie.
Saying sayingOf(const std::vector<Word>& typed) {
    Saying saying{typed, {}};
    if (names(typed, Verb::Names::file)) saying.contents = contentsOf(typed.back().text);
    if (!names(typed, Verb::Names::folders)) return saying;
    for (auto word = saying.words.begin() + 1; word != saying.words.end(); ++word)
        word->text = absolute(word->text);
    return saying;
}

/// A folder's name may hold anything.
QString folderLines(const QString& text) {
    QString lines;
    for (const QString& folder : text.split(u'\n', Qt::SkipEmptyParts))
        lines += oneLine(folder) + u'\n';
    return lines;
}

Run readVerb(const WordList& texts) {
    const std::vector<Word> words = plainWords(texts);
    understood({words, {}}); // or else it is wrong, and nothing is called
    return [words] {
        Control control{serviceName, objectPath, sessionBus()};
        const auto said = QString::fromUtf8(answered(callToDo(control, sayingOf(words))));
        const bool listsFolders = verbNamed(words.front().text)->names == Verb::Names::folders;
        say(listsFolders ? folderLines(said) : said);
    };
}

// All of them --------------------------------------------------------------------------------------------------------

std::vector<Command> everyCommand() {
    std::vector<Command> all{std::begin(commandsThatLook), std::end(commandsThatLook)};
    for (const Verb& verb : verbs())
        all.push_back({verb});
    all.push_back(commandThatPlays());
    return all;
}

// Help ---------------------------------------------------------------------------------------------------------------

constexpr auto opening = R"(usage: sysextctl VERB [ARGUMENTS]
       sysextctl --help | --version

Controls the simulated Mac: prints its system extensions and open requests, and acts as its user and as the machine.
ID is an extension's bundle identifier, such as com.kelvra.ip-camera.cmio.
)";

constexpr auto closing = R"(
"sysextctl VERB --help" explains a verb.

Exit status, with one line on standard error unless it is 0:
  0  done
  1  understood, but not done: nothing to allow or deny, a state not reached, no service
  2  not understood: an unknown verb, identifier, state, or option; a missing or unexpected argument; a file or
     folder that does not exist
)";

/// A call that leaves no room stands on a line of its own.
std::string lineOf(const Command& command) {
    constexpr std::size_t columnWidth = 34;
    std::string call = usageOf(command.word, command.usage);
    if (call.size() >= columnWidth) call += "\n" + std::string(columnWidth + 2, ' ');
    call.resize(std::max(columnWidth, call.size()), ' ');
    return "  " + call + std::string{command.summary} + "\n";
}

// What is typed ------------------------------------------------------------------------------------------------------

bool asksForHelp(const std::string& word) {
    return word == "--help" || word == "-h";
}

Run read(const WordList& words) {
    if (words.empty()) throw NotUnderstood{"missing verb; \"sysextctl --help\" lists the verbs"};
    const WordList rest{words.begin() + 1, words.end()};
    if (asksForHelp(words.front()) || words.front() == "help") {
        const std::string text = rest.empty() ? help() : help(commandNamed(rest.front()));
        return [text] { say(QString::fromStdString(text)); };
    }
    if (words.front() == "--version") return [] { say("sysextctl " SIMULATOR_VERSION "\n"); };
    const Command& command = commandNamed(words.front());
    const WordList own{rest.begin(), std::find(rest.begin(), rest.end(), "--")}; // of play, another program follows
    const bool isHelp = isOneOf(own, "--help") || (!rest.empty() && asksForHelp(rest.front()));
    if (isHelp) return [&command] { say(QString::fromStdString(help(command))); };
    if (!command.read) return readVerb(words);
    Words reading{plainWords(rest), "sysextctl " + usageOf(command.word, command.usage), std::string{command.word}};
    return command.read(reading);
}

} // namespace

std::string help() {
    std::string text{opening};
    std::string_view head;
    for (const Command& command : commands()) {
        if (command.head != head) text += "\n" + std::string{command.head} + "\n";
        head = command.head;
        text += lineOf(command);
    }
    return text + closing;
}

std::string help(const Command& command) {
    std::string summary{command.summary};
    summary.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(summary.front())));
    return "usage: sysextctl " + usageOf(command.word, command.usage) + "\n\n" + summary + ".\n" + command.details;
}

const std::vector<Command>& commands() {
    static const auto all = everyCommand();
    return all;
}

const Command& commandNamed(const std::string& word) {
    for (const Command& command : commands())
        if (command.word == word) return command;
    throw NotUnderstood{"unknown verb " + inQuotes(word) + "; \"sysextctl --help\" lists the verbs"};
}

Run readCommandLine(const WordList& words) {
    try {
        return read(words);
    } catch (const NotUnderstood& problem) {
        throw CommandFailure{exitCode::notUnderstood, QString::fromUtf8(problem.what())};
    }
}

} // namespace simulator::ctl
