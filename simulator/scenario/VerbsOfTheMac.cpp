// The person in front of the Mac, the machine, and what goes wrong: the words of the command line.

#include "simulator/core/CopyState.h"
#include "simulator/core/Switch.h"
#include "simulator/scenario/FaultWords.h"
#include "simulator/scenario/FileContents.h"
#include "simulator/scenario/Reading.h"

#include <algorithm>
#include <utility>

namespace simulator::scenario {

namespace {

template <ByPerson::What what>
Action readByPerson(Reading& reading) {
    return Deed{ByPerson{what, reading.line.take("an extension's identifier")}};
}

template <typename Plain>
Action readPlain(Reading&) {
    return Deed{Plain{}};
}

Action readInstall(Reading& reading) {
    Line& line = reading.line;
    Install install;
    install.identifier = line.take("an extension's identifier");
    install.version.shortVersion = line.take("a short version");
    install.version.version = line.take("a build");
    install.condition = "enabled";
    if (!line.isAtEnd()) {
        install.condition = line.takeOneOf("a state", {"enabled", "waiting", "disabled", "uninstalling"});
    }
    return Deed{install};
}

Action readUninstall(Reading& reading) {
    const std::string team = reading.line.take("a team");
    return Deed{Uninstall{team, reading.line.take("an extension's identifier")}};
}

Action readDeveloper(Reading& reading) {
    return Deed{SetDeveloperMode{reading.line.takeOneOf("a mode", {"on", "off"}) == "on"}};
}

std::string takeContents(Line& line, const std::string& folder) {
    const std::string file = line.take("a file");
    const std::string path = file.rfind('/', 0) == 0 ? file : folder + "/" + file;
    auto contents = contentsOfFile(path);
    if (!contents || contents->empty()) line.fail("\"" + path + "\" cannot be read");
    return std::move(*contents);
}

Action readProfile(Reading& reading) {
    Line& line = reading.line;
    if (line.takes("--remove")) return Deed{SetProfile{}};
    return Deed{SetProfile{takeContents(line, reading.folder)}};
}

Action readAdvance(Reading& reading) {
    return Deed{Advance{reading.line.takeDuration()}};
}

Action readSwitch(Reading& reading) {
    Line& line = reading.line;
    std::vector<std::string> names;
    for (const SwitchRow& row : switches)
        names.emplace_back(row.name);
    const std::string name = line.takeOneOf("a switch", names);
    const SwitchRow& row = describe(*switchNamed(name));
    return Deed{SetSwitch{
        name, line.takeOneOf("a value of " + name, {std::string{row.byDefault}, std::string{row.otherwise}})}};
}

// Faults -------------------------------------------------------------------------------------------------------------

const RequestWord& takeKind(Line& line) {
    std::vector<std::string> words;
    for (const RequestWord& known : requestWords)
        words.emplace_back(known.word);
    const std::string word = line.takeOneOf("a kind of request", words);
    return *std::find_if(requestWords.begin(), requestWords.end(),
                         [&](const RequestWord& known) { return known.word == word; });
}

Failure takeFailure(Line& line) {
    const std::int64_t code = line.takeNumber("a fault: a code, after, silent, hollow, noprompt or crash");
    Failure failure{std::string{extensionErrorDomain}, code, {}};
    if (!line.isAtEnd() && !line.takes("--domain")) failure.description = line.take("a description");
    if (line.isAtEnd()) return failure;
    line.takes("--domain");
    failure.domain = line.take("a domain");
    return failure;
}

Action readFault(Reading& reading) {
    Line& line = reading.line;
    line.mustTake("next");
    const RequestWord& request = takeKind(line);
    Fault fault;
    fault.request = request.kind;
    for (const Fault::Kind kind :
         {Fault::Kind::silent, Fault::Kind::hollow, Fault::Kind::noprompt, Fault::Kind::crash}) {
        if (!line.takes(nameOf(kind))) continue;
        fault.kind = kind;
        if (!isPossible(fault)) {
            line.failUnknown("a kind of request that can be " + std::string{nameOf(kind)}, request.word,
                             requestWordsFor(kind));
        }
        return Deed{OrderFault{fault}};
    }
    if (line.takes("after")) {
        fault.kind = Fault::Kind::delay;
        fault.milliseconds = line.takeDuration();
    } else {
        fault.failure = takeFailure(line);
    }
    return Deed{OrderFault{fault}};
}

} // namespace

const std::vector<Verb>& verbsOfTheMac() {
    using What = ByPerson::What;
    static const std::vector<Verb> verbs{
        {"allow", "ID", readByPerson<What::allow>},
        {"deny", "ID", readByPerson<What::deny>},
        {"authorize", "ID", readByPerson<What::authorize>},
        {"refuse", "ID", readByPerson<What::refuse>},
        {"disable", "ID", readByPerson<What::disable>},
        {"enable", "ID", readByPerson<What::enable>},
        {"restart", "", readPlain<Restart>},
        {"reset", "", readPlain<Reset>},
        {"install", "ID SHORT BUILD [enabled|waiting|disabled|uninstalling]", readInstall},
        {"uninstall", "TEAM ID", readUninstall},
        {"developer", "on|off", readDeveloper},
        {"profile", "FILE | --remove", readProfile},
        {"advance", "TIME", readAdvance},
        {"switch", "NAME VALUE", readSwitch},
        {"fault", "next KIND CODE [TEXT] [--domain D] | after TIME | silent | hollow | noprompt | crash", readFault},
    };
    return verbs;
}

} // namespace simulator::scenario
