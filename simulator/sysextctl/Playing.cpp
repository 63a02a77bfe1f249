#include "simulator/sysextctl/Commands.h"

#include "simulator/player/BusMac.h"
#include "simulator/player/Command.h"
#include "simulator/player/Scenario.h"
#include "simulator/sysextctl/Output.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>

namespace simulator::ctl {

namespace {

constexpr auto beforeTheGrammar =
    R"(FILE is a scenario; - is standard input. A scenario that fails does not stop the next one. Each one starts with nothing
installed and every setting at its default, and affects no other simulated Mac.
  --bus      plays it on a bus and a service of its own, with real processes; without it, in this process
  --verbose  prints each step before it is played
  --tap      prints the results in the Test Anything Protocol, for test harnesses
  --timeout  is how long a line waits for the command, 30 s by default
With COMMAND, a scenario tests another application: the line "start" starts COMMAND on the bus of the scenario. One of
its words is the program of a bundle, such as Meter.app/Contents/MacOS/meter, whose folder counts as /Applications. Then
lines that expect copies, requests, or an exit status wait until they match. "stop", "restart", another "start", and the
end of the scenario end the command and all that it started. The scenario fails if the command ended by itself with
another status than 0, unless "expect exit" names it; 128 is added to the number of a signal.
Ends with 0 if everything went as expected, 1 if not, and 2 if a scenario cannot be read or understood.

Each line is one of these; # starts a comment, and a word that contains a blank is in "quotes". NAME is an
application. The default is "Driver Manager", which is in /Applications and contains the drivers
com.kelvra.driverkit.base and com.kelvra.driverkit.usb-to-poe and the camera com.kelvra.ip-camera.cmio, each 2.1/2105.
REQUEST is the name that "called" gave a request, or else its ID. The FILE of "profile" is beside the scenario; any
other FILE is an extension in its application, such as com.kelvra.driverkit.base.dext. PATH is a path on the simulated
disk. A scenario ends at the first line that does not match, and at an answer that no line expects.

)";

constexpr auto behindTheGrammar = R"(
TIME is a number with ms, s, m, h or d; seconds if there is none. LACK is identifier, usage-description or seal.
CATEGORY is cmio, endpoint_security, network_extension or unknown; only a .systemextension has one. KIND is activate,
deactivate, properties or any. STATE is as "list" prints it, such as activated enabled, or one word, such as enabled;
"sysextctl wait --help" lists both, "sysextctl switch --help" the switches, and "sysextctl fault --help" the faults.

Example:
  # The user denies the camera in System Settings.
  activate com.kelvra.ip-camera.cmio
  expect needs approval
  deny com.kelvra.ip-camera.cmio
  expect failed 11
  expect copies com.kelvra.ip-camera.cmio none
)";

struct Orders {
    WordList files;
    QStringList command;
    std::int64_t timeout = 0;
    bool isOnBus = false;
    bool isVerbose = false;
    bool isTap = false;
};

/// What came of a scenario: what the program would end with, and one line.
struct Outcome {
    int code = exitCode::done;
    QString line;
};

std::unique_ptr<player::Mac> newMac(const Orders& orders) {
    const QString programs = QCoreApplication::applicationDirPath();
    if (orders.isOnBus) return player::newBusMac(programs, orders.command, orders.timeout);
    return player::newCoreMac();
}

QString lineAt(const std::string& file, std::size_t line, const std::string& text) {
    return oneLine(QString::fromStdString(file + ":" + std::to_string(line) + ": " + text));
}

Outcome playFile(const std::string& file, const Orders& orders) {
    try {
        const auto scenario = player::readScenarioFile(file);
        const auto isStart = [](const player::Step& step) { return step.text == "start"; };
        if (!orders.command.isEmpty() && std::none_of(scenario.begin(), scenario.end(), isStart))
            throw player::ScenarioError{file + ": no line starts the command; add the line \"start\""};
        const auto begins = [&](const player::Step& step) {
            if (orders.isVerbose) say((orders.isTap ? "# " : "") + lineAt(file, step.line, step.text) + u'\n');
        };
        const auto mismatch = player::play(scenario, *newMac(orders), begins);
        if (mismatch) return {exitCode::notDone, lineAt(file, mismatch->line, mismatch->text)};
        const std::string steps = std::to_string(scenario.size()) + (scenario.size() == 1 ? " step" : " steps");
        return {exitCode::done, oneLine(QString::fromStdString(file + ": " + steps + ", all as expected"))};
    } catch (const player::ScenarioError& error) {
        return {exitCode::notUnderstood, oneLine(QString::fromUtf8(error.what()))};
    } catch (const player::NotDone& problem) {
        return {exitCode::notDone, oneLine(QString::fromUtf8(problem.what()))};
    }
}

// What is printed ----------------------------------------------------------------------------------------------------

/// A test of the Test Anything Protocol; in its name a # would begin a directive.
QString tapLines(std::size_t number, const std::string& file, Outcome outcome) {
    const QString name = oneLine(QString::fromStdString(file)).replace(u'\\', "\\\\").replace(u'#', "\\#");
    const QString test = QStringLiteral("ok %1 - %2\n").arg(number).arg(name);
    if (outcome.code == exitCode::done) return test;
    return "not " + test + "  ---\n  message: '" + outcome.line.replace(u'\'', "''") + "'\n  ...\n";
}

void report(std::size_t number, const Orders& orders, const Outcome& outcome) {
    if (orders.isTap) return say(tapLines(number, orders.files[number - 1], outcome));
    if (outcome.code == exitCode::done) return say(outcome.line + u'\n');
    std::fprintf(stderr, "sysextctl: %s\n", qUtf8Printable(outcome.line));
}

void playAll(const Orders& orders) {
    const std::size_t count = orders.files.size();
    if (orders.isTap) say(QStringLiteral("TAP version 13\n1..%1\n").arg(count));
    int worst = exitCode::done;
    std::size_t failed = 0;
    for (std::size_t number = 1; number <= count; ++number) {
        const Outcome outcome = playFile(orders.files[number - 1], orders);
        report(number, orders, outcome);
        worst = std::max(worst, outcome.code);
        if (outcome.code != exitCode::done) ++failed;
    }
    const auto summary = QStringLiteral("%1 of %2 scenarios went as expected").arg(count - failed).arg(count);
    if (worst != exitCode::done) throw CommandFailure{worst, summary};
    if (!orders.isTap) say(summary + u'\n');
}

void playOne(const Orders& orders) {
    const Outcome outcome = playFile(orders.files.front(), orders);
    if (outcome.code != exitCode::done) throw CommandFailure{outcome.code, outcome.line};
    say(outcome.line + u'\n');
}

QStringList takeCommand(Words& words) {
    const auto typed = words.takeCommand();
    QStringList command;
    for (const std::string& word : typed.value_or(WordList{}))
        command += QString::fromStdString(word);
    if (!typed || !player::bundleOfCommand(command).isEmpty()) return command;
    words.fail("a command names the program in an application, such as Meter.app/Contents/MacOS/meter");
}

Run play(Words& words) {
    Orders orders;
    orders.command = takeCommand(words);
    orders.timeout = words.takeDurationOption("--timeout").value_or(30'000);
    orders.isOnBus = words.takeFlag("--bus") || !orders.command.isEmpty();
    orders.isVerbose = words.takeFlag("--verbose");
    orders.isTap = words.takeFlag("--tap");
    words.expect(1, std::numeric_limits<std::size_t>::max());
    orders.files = words.takeAll("a file");
    const bool isPlain = orders.files.size() == 1 && !orders.isTap;
    return [orders, isPlain] { isPlain ? playOne(orders) : playAll(orders); };
}

} // namespace

Command commandThatPlays() {
    constexpr std::string_view usage = "FILE... [--bus] [--verbose] [--tap] [--timeout TIME] [-- COMMAND]";
    return {{"Scenarios", "play", usage, "plays scenarios, each on a Mac of its own",
             beforeTheGrammar + player::grammar() + behindTheGrammar},
            play};
}

} // namespace simulator::ctl
