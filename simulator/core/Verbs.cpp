#include "simulator/core/Verbs.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace simulator {

namespace {

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

constexpr std::string_view anIdentifier = "an extension identifier";

Outcome outcomeOf(Verdict verdict) {
    if (verdict) return *std::move(verdict);
    return std::string{};
}

template <void (Machine::*deed)()>
Deed ofTheMachine() {
    return [](Machine& machine) {
        (machine.*deed)();
        return std::string{};
    };
}

Deed restart(Words& words) {
    words.expect(0, 0);
    return ofTheMachine<&Machine::restart>();
}

template <Verdict (Machine::*deed)(const std::string&)>
Deed ofAnExtension(Words& words) {
    words.expect(1, 1);
    return [identifier = words.take(anIdentifier)](Machine& machine) { return outcomeOf((machine.*deed)(identifier)); };
}

Deed reset(Words& words) {
    const bool isOfAll = words.takeFlag("--all");
    words.expect(0, 0);
    return isOfAll ? ofTheMachine<&Machine::resetAll>() : ofTheMachine<&Machine::reset>();
}

Deed install(Words& words) {
    words.expect(3, 4);
    const std::string identifier = words.take(anIdentifier);
    const std::string shortVersion = words.take("a short version");
    const Version version{shortVersion, words.take("a build")};
    std::string state = "enabled";
    if (!words.isAtEnd()) state = words.takePhrase("a state", wordsForStates(&CopyStateRow::canBeInstalled));
    return [=](Machine& machine) { return outcomeOf(machine.install(identifier, version, state)); };
}

Deed uninstall(Words& words) {
    words.expect(2, 2);
    const std::string team = words.take("a team");
    const std::string identifier = words.take(anIdentifier);
    return [=](Machine& machine) { return outcomeOf(machine.uninstall(team, identifier)); };
}

// Settings -----------------------------------------------------------------------------------------------------------

Outcome foldersOf(const Machine& machine) {
    return joined(machine.state().settings.applicationsFolders, "\n") + "\n";
}

Deed applications(Words& words) {
    words.expect(0, std::numeric_limits<std::size_t>::max());
    if (words.asks()) return foldersOf;
    const WordList folders = words.takeAll("a folder");
    if (isOneOf(folders, std::string{})) words.misused("\"\" is not a folder");
    return [folders](Machine& machine) { return outcomeOf(machine.setApplicationsFolders(folders)); };
}

Outcome modeOf(const Machine& machine) {
    return machine.state().settings.developerMode ? "Developer mode is on\n" : "Developer mode is off\n";
}

Deed developer(Words& words) {
    words.expect(0, 1);
    if (words.asks()) return modeOf;
    return [isOn = words.takeOneOf("a mode", {"on", "off"}) == "on"](Machine& machine) {
        machine.setDeveloperMode(isOn);
        return std::string{};
    };
}

Outcome profileOf(const Machine& machine) {
    const std::string& source = machine.state().settings.profile.source;
    return source.empty() ? "No profile\n" : source;
}

Deed profile(Words& words) {
    const bool isRemoved = words.takeFlag("--remove");
    words.expect(0, isRemoved ? 0 : 1);
    if (isRemoved) return [](Machine& machine) { return outcomeOf(machine.setProfile({})); };
    if (words.asks()) return profileOf;
    words.take("a file");
    return [contents = words.contents()](Machine& machine) -> Outcome {
        return contents.empty() ? invalid("the profile is empty") : outcomeOf(machine.setProfile(contents));
    };
}

Outcome clockOf(const Machine& machine) {
    return inSeconds(machine.state().clock) + " s\n";
}

Deed clock(Words& words) {
    words.expect(0, 0);
    return clockOf;
}

Deed advance(Words& words) {
    words.expect(1, 1);
    return [length = words.takeDuration()](Machine& machine) -> Outcome {
        if (auto refusal = machine.advance(length)) return *std::move(refusal);
        return clockOf(machine);
    };
}

/// The switch of that name, or every switch.
std::vector<SwitchRow> switchesFor(const std::string& name) {
    std::vector<SwitchRow> rows;
    for (const SwitchRow& row : switches)
        if (name.empty() || name == row.name) rows.push_back(row);
    return rows;
}

/// The default is the first.
WordList valuesOf(const SwitchRow& row) {
    return {std::string{row.byDefault}, std::string{row.otherwise}};
}

std::string lineOf(const Machine& machine, const SwitchRow& row) {
    const std::string value{machine.state().settings.valueOf(row.which)};
    const std::string values = "(" + joined(valuesOf(row), " | ") + ")";
    return joined({std::string{row.name}, value, values, std::string{row.meaning}}, "\t") + "\n";
}

/// No text of the table needs an escape.
std::string jsonOf(const Machine& machine, const SwitchRow& row) {
    const auto field = [](std::string_view key, std::string_view text) { return inQuotes(key) + ":" + inQuotes(text); };
    const WordList fields{field("name", row.name), field("value", machine.state().settings.valueOf(row.which)),
                          field("default", row.byDefault), field("otherwise", row.otherwise),
                          field("meaning", row.meaning)};
    return "{" + joined(fields, ",") + "}";
}

Deed showSwitches(const std::string& name, bool isJson) {
    return [=](const Machine& machine) {
        WordList lines;
        for (const SwitchRow& row : switchesFor(name))
            lines.push_back(isJson ? jsonOf(machine, row) : lineOf(machine, row));
        return isJson ? "[\n" + joined(lines, ",\n") + "\n]\n" : joined(lines, "");
    };
}

/// An empty value stands for the default.
Deed setSwitches(const std::string& name, const std::string& value) {
    return [=](Machine& machine) {
        for (const SwitchRow& row : switchesFor(name))
            machine.setSwitch(row.which, value.empty() ? valuesOf(row).front() : value);
        return std::string{};
    };
}

Deed switchVerb(Words& words) {
    const bool isReset = words.takeFlag("--reset");
    const bool isJson = !isReset && words.takeFlag("--json");
    words.expect(0, isReset || isJson ? 1 : 2);
    const bool needsName = !words.isAtEnd() || !(words.areTyped() || isReset);
    WordList names;
    for (const SwitchRow& row : switches)
        names.emplace_back(row.name);
    const std::string name = needsName ? words.takeOneOf("a switch", names) : "";
    if (isReset) return setSwitches(name, {});
    if (words.asks()) return showSwitches(name, isJson);
    return setSwitches(name, words.takeOneOf("a value of " + name, valuesOf(describe(*switchNamed(name)))));
}

std::string listOfSwitches() {
    std::string lines;
    for (const SwitchRow& row : switches)
        lines += "  " + padded(std::string{row.name}, 15) + padded(joined(valuesOf(row), " | "), 20) +
                 std::string{row.meaning} + "\n";
    return lines;
}

// Faults -------------------------------------------------------------------------------------------------------------

/// The words for the requests that such a fault can affect.
WordList requestWordsFor(Fault::Kind kind) {
    WordList known;
    for (const RequestWord& row : requestWords)
        if (isPossible({kind, row.kind, {}, 0})) known.emplace_back(row.word);
    return known;
}

std::optional<RequestKind> requestFor(const std::string& word) {
    return std::find_if(requestWords.begin(), requestWords.end(),
                        [&](const RequestWord& row) { return row.word == word; })
        ->kind;
}

/// Code 0 is not an error, and the system's own domain has no negative codes.
std::int64_t takeCode(Words& words, const std::string& domain) {
    const std::string word = words.take("a fault");
    if (word.empty() || word.find_first_not_of("+-0123456789") != std::string::npos)
        words.reject("a fault", word, {"an error code", "after", "silent", "hollow", "noprompt", "crash"});
    const std::int64_t code = numberIn(word).value_or(0);
    const bool isPossible = code > 0 || (code < 0 && domain != extensionErrorDomain);
    if (!isPossible)
        words.fail(inQuotes(word) + " is not an error code; use 1 to 9223372036854775807, or in another domain a "
                                    "negative number");
    return code;
}

Failure takeFailure(Words& words, const std::string& domain) {
    const std::string where = domain.empty() ? std::string{extensionErrorDomain} : domain;
    const std::int64_t code = takeCode(words, where);
    return {where, code, words.isAtEnd() ? std::string{} : words.take("a description")};
}

/// An error begins with its code, any other fault with a word.
Fault::Kind takeKind(Words& words) {
    using Kind = Fault::Kind;
    for (const Kind kind : {Kind::silent, Kind::hollow, Kind::noprompt, Kind::crash})
        if (words.takes(nameOf(kind))) return kind;
    return words.takes("after") ? Kind::delay : Kind::error;
}

Deed orderFault(Words& words) {
    const auto domain = words.takeOption("--domain", "a domain");
    words.expect(3, 4);
    words.mustTake("next");
    const std::string request = words.takeOneOf("a kind of request", requestWordsFor(Fault::Kind::error));
    Fault fault{takeKind(words), requestFor(request), {}, 0};
    if (fault.kind == Fault::Kind::error) {
        fault.failure = takeFailure(words, domain.value_or(std::string{}));
    } else {
        const bool isDelay = fault.kind == Fault::Kind::delay;
        words.expect(isDelay ? 4 : 3, isDelay ? 4 : 3);
        if (domain) words.misused("unexpected option \"--domain\"");
        const WordList possible = requestWordsFor(fault.kind);
        const std::string what = "a kind of " + std::string{nameOf(fault.kind)} + " request";
        if (!isOneOf(possible, request)) words.reject(what, request, possible);
        if (isDelay) fault.milliseconds = words.takeDuration();
    }
    return [fault](Machine& machine) { return outcomeOf(machine.orderFault(fault)); };
}

/// A description can contain line ends.
Outcome faultsOf(const Machine& machine) {
    std::string lines;
    for (const auto& [number, fault] : machine.state().faults) {
        std::string line = "next " + textOf(fault);
        std::replace(line.begin(), line.end(), '\n', ' ');
        lines += line + "\n";
    }
    return lines.empty() ? "No faults\n" : lines;
}

Deed fault(Words& words) {
    const bool isList = words.areTyped() && words.takes("list");
    const bool isClear = !isList && words.takes("clear");
    if (isList || isClear) words.expect(1, 1);
    if (isList) return faultsOf;
    return isClear ? ofTheMachine<&Machine::clearFaults>() : orderFault(words);
}

// The table ----------------------------------------------------------------------------------------------------------

constexpr std::string_view theUser = "The user and the administrator";
constexpr std::string_view theMac = "The Mac and its settings";
constexpr std::string_view theFaults = "Faults";

const Verb table[]{
    {{theUser, "allow", "ID", "allows an extension that waits for approval",
      R"(Enables the waiting copy of ID and records the approval for later versions. The request that waits for it finishes
with 0, or with 1 if a restart must complete it.
)"},
     ofAnExtension<&Machine::allow>},
    {{theUser, "deny", "ID", "denies an extension that waits for approval",
      R"(Removes the waiting copy of ID. The request that waits for it fails with 11, canceled. After
"sysextctl switch denial silence", it is never answered.
)"},
     ofAnExtension<&Machine::deny>},
    {{theUser, "authorize", "ID", "authorizes the removal of an extension",
      R"(Removes every copy of ID and withdraws its approval. The request finishes with 0, or with 1 if a restart must complete
it. After "sysextctl switch authorization granted", removals no longer wait for an administrator.
)"},
     ofAnExtension<&Machine::authorize>},
    {{theUser, "refuse", "ID", "refuses the removal of an extension",
      R"(Removes nothing. The request fails with 13, authorization required; after "sysextctl switch refusal 11", it fails with
11, canceled.
)"},
     ofAnExtension<&Machine::refuse>},
    {{theUser, "disable", "ID", "switches an enabled extension off",
      R"(Does what the switch in System Settings does; the copy of ID is then "activated disabled". No application is notified,
but a properties request reports the change.
)"},
     ofAnExtension<&Machine::disable>},
    {{theUser, "enable", "ID", "switches a disabled extension on",
      R"(Enables the disabled copy of ID again, without approval. No application is notified, but a properties request reports
the change.
)"},
     ofAnExtension<&Machine::enable>},
    {{theMac, "restart", "", "restarts the simulated Mac, which ends every application",
      R"(Copies that are uninstalling disappear. Waiting copies keep waiting, and open requests are never answered. "./run"
starts the application again.
)"},
     restart},
    {{theMac, "reset", "[--all]", "removes every copy, approval, request, and fault",
      R"(Open requests fail with 11, canceled. Settings stay: the Applications folders, developer mode, the profile, the clock,
and the switches. With --all, only the Applications folders stay.
)"},
     reset,
     {},
     "--all"},
    {{theMac, "install", "ID SHORT BUILD [STATE]", "installs a copy without a request",
      R"(SHORT and BUILD are the two parts of the version. An enabled or disabled copy is also approved. STATE is one of
these, in either wording, and enabled if left out:
)" + listOfStates(&CopyStateRow::canBeInstalled) +
          "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004 \"activated waiting for user\"\n"},
     install},
    {{theMac, "uninstall", "TEAM ID", "removes an extension without a request",
      R"(TEAM is the team identifier that "list" shows, or - for any. The approval is withdrawn, and the copies disappear with
the next restart. No application is notified, and no administrator has to authorize the removal.
Example: sysextctl uninstall KELVRA0001 com.kelvra.ip-camera.cmio
)"},
     uninstall},
    {{theMac, "applications", "[FOLDER...]", "sets or prints the Applications folders",
      R"(An application can activate extensions only from inside one of these folders. Each FOLDER must exist. The service
knows the extensions of the applications in them, and those that were ever installed.
Example: sysextctl applications /Applications ~/Applications
)"},
     applications,
     "FOLDER...",
     {},
     Verb::Names::folders},
    {{theMac, "developer", "[on|off]", "sets or prints developer mode",
      R"(In developer mode, an application may be outside the Applications folders, and activating the version that is already
enabled asks the replacement question.
)"},
     developer,
     "on|off"},
    {{theMac, "profile", "[FILE | --remove]", "installs, removes, or prints the management profile",
      R"(FILE is a property list, or a .mobileconfig that contains one, with any of these keys:
  AllowedSystemExtensions    identifiers by team, which are activated without approval
  AllowedTeamIdentifiers     teams whose extensions are all activated without approval
  AllowUserOverrides         if false, activating any other extension fails with 10
  RemovableSystemExtensions  identifiers by team, which are removed without an administrator
A new profile completes the requests that wait for what it allows. "allow", "enable", and "install" do not enable an
extension that it forbids. Without an argument, prints the profile.
Example: sysextctl profile simulator/scenarios/allow-team.mobileconfig
)"},
     profile,
     "FILE | --remove",
     "--remove",
     Verb::Names::file},
    {{theMac, "clock", "", "prints the simulated clock, in seconds",
      "The clock stands still until \"sysextctl advance\" moves it.\n"},
     clock,
     noLine},
    {{theMac, "advance", "TIME", "moves the simulated clock forward and prints it",
      "TIME is a number with ms, s, m, h, or d; seconds without a unit.\n"},
     advance},
    {{theMac, "switch", "[NAME] [VALUE | --reset | --json]", "sets or prints what public sources leave open",
      R"(Without VALUE, prints the switch; without NAME, every switch: its name, value, both possible values with the default
first, and meaning, separated by tabs. --reset restores the default of the switch, or of every switch. --json prints an
array of objects with name, value, default, otherwise, and meaning. The switches are
)" + listOfSwitches() +
          "Example: sysextctl switch denial silence\n"},
     switchVerb,
     "NAME VALUE | [NAME] --reset",
     "--reset"},
    {{theFaults, "fault", "next KIND FAULT | list | clear", "orders, prints, or cancels faults of coming requests",
      R"(Orders a fault for the next request. KIND is activate, deactivate, properties, or any. FAULT is one of
  CODE [TEXT] [--domain D]  fails with the error CODE, which is above 0, or in another domain D also below 0
  after TIME                is answered that much later on the simulated clock
  silent                    is never answered
  hollow                    finishes, but nothing runs; not for properties
  noprompt                  waits for the user without saying so; only for activate
  crash                     the service crashes while it works on the request
"list" prints the faults that no request has met yet, in the words that order them; "clear" cancels them all.
Example: sysextctl fault next activate 8 "code signature invalid"
)"},
     fault,
     "clear | next KIND CODE [TEXT] [--domain D] | after TIME | silent | hollow | noprompt | crash",
     "--domain"},
};

} // namespace

std::string listOfStates(bool CopyStateRow::*trait) {
    std::string lines;
    for (const CopyStateRow& row : copyStates)
        if (!trait || row.*trait) lines += "  " + padded(std::string{row.condition}, 15) + std::string{row.text} + "\n";
    return lines;
}

std::string usageOf(std::string_view word, std::string_view usage) {
    return std::string{word} + (usage.empty() ? "" : " " + std::string{usage});
}

std::string lineOf(const Verb& verb) {
    return usageOf(verb.word, verb.line.empty() ? verb.usage : verb.line);
}

std::span<const Verb> verbs() {
    return table;
}

const Verb* verbNamed(std::string_view word) {
    const auto found =
        std::find_if(verbs().begin(), verbs().end(), [&](const Verb& verb) { return verb.word == word; });
    return found == verbs().end() ? nullptr : &*found;
}

bool names(const std::vector<Word>& words, Verb::Names what) {
    const Verb* const verb = words.empty() ? nullptr : verbNamed(words.front().text);
    const bool mayName = verb && verb->names == what && words.size() > 1;
    return mayName && (words.back().isQuoted || !isOption(words.back().text));
}

Deed understood(const Saying& saying, WrittenOn where) {
    const std::string word = saying.words.empty() ? "" : saying.words.front().text;
    const Verb* const verb = verbNamed(word);
    if (!verb) throw NotUnderstood{"unknown verb " + inQuotes(word) + "; \"sysextctl --help\" lists the verbs"};
    const bool isTyped = where == WrittenOn::commandLine;
    Words rest{{saying.words.begin() + 1, saying.words.end()},
               isTyped ? "sysextctl " + usageOf(word, verb->usage) : lineOf(*verb),
               word,
               where};
    rest.setContents(saying.contents);
    Deed deed = verb->read(rest);
    rest.end();
    return deed;
}

} // namespace simulator
