#include "simulator/core/Verbs.h"

#include <algorithm>
#include <array>
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
    std::string lines;
    for (const std::string& folder : machine.state().settings.applicationsFolders)
        lines += folder + "\n";
    return lines;
}

Deed applications(Words& words) {
    words.expect(0, std::numeric_limits<std::size_t>::max());
    if (words.asks()) return foldersOf;
    WordList folders{words.take("a folder")};
    for (const std::string& folder : words.takeAll())
        folders.push_back(folder);
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

WordList switchNames() {
    WordList names;
    for (const SwitchRow& row : switches)
        names.emplace_back(row.name);
    return names;
}

WordList valuesOf(const std::string& name) {
    const SwitchRow& row = describe(*switchNamed(name));
    return {std::string{row.byDefault}, std::string{row.otherwise}};
}

std::string lineOf(const Machine& machine, const SwitchRow& row) {
    const std::string values = "(" + std::string{row.byDefault} + " | " + std::string{row.otherwise} + ")";
    const std::string value{machine.state().settings.valueOf(row.which)};
    return joined({std::string{row.name}, value, values, std::string{row.meaning}}, "\t") + "\n";
}

/// Its texts need nothing but quotes.
std::string jsonOf(const Machine& machine, const SwitchRow& row) {
    WordList fields;
    for (const auto& [key, value] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"name", row.name},
             {"value", machine.state().settings.valueOf(row.which)},
             {"default", row.byDefault},
             {"otherwise", row.otherwise},
             {"meaning", row.meaning}})
        fields.push_back(inQuotes(key) + ":" + inQuotes(value));
    return "{" + joined(fields, ",") + "}";
}

/// The switch of that name, or every switch.
std::vector<SwitchRow> switchesFor(const std::string& name) {
    std::vector<SwitchRow> rows;
    for (const SwitchRow& row : switches)
        if (name.empty() || name == row.name) rows.push_back(row);
    return rows;
}

Deed showSwitches(const std::string& name, bool isJson) {
    return [=](const Machine& machine) {
        WordList lines;
        for (const SwitchRow& row : switchesFor(name))
            lines.push_back(isJson ? jsonOf(machine, row) : lineOf(machine, row));
        return isJson ? "[\n" + joined(lines, ",\n") + "\n]\n" : joined(lines, "");
    };
}

Deed resetSwitches(const std::string& name) {
    return [name](Machine& machine) {
        Verdict verdict = done;
        for (const SwitchRow& row : switchesFor(name))
            if (!verdict) verdict = machine.setSwitch(std::string{row.name}, std::string{row.byDefault});
        return outcomeOf(verdict);
    };
}

Deed setSwitch(Words& words) {
    const bool isReset = words.takeFlag("--reset");
    const bool isJson = !isReset && words.takeFlag("--json");
    words.expect(0, isReset || isJson ? 1 : 2);
    const bool needsName = !words.isAtEnd() || !(words.areTyped() || isReset);
    const std::string name = needsName ? words.takeOneOf("a switch", switchNames()) : std::string{};
    if (isReset) return resetSwitches(name);
    if (words.asks()) return showSwitches(name, isJson);
    const std::string value = words.takeOneOf("a value of " + name, valuesOf(name));
    return [=](Machine& machine) { return outcomeOf(machine.setSwitch(name, value)); };
}

std::string listOfInstallable() {
    return listOfStates(&CopyStateRow::canBeInstalled) +
           "Example: sysextctl install com.kelvra.ip-camera.cmio 2.0 2004 \"activated waiting for user\"\n";
}

std::string listOfSwitches() {
    std::string lines;
    for (const SwitchRow& row : switches) {
        const std::string values = std::string{row.byDefault} + " | " + std::string{row.otherwise};
        lines += "  " + padded(std::string{row.name}, 15) + padded(values, 20) + std::string{row.meaning} + "\n";
    }
    return lines + "Example: sysextctl switch denial silence\n";
}

// Faults -------------------------------------------------------------------------------------------------------------

/// The words for the requests that such a fault can befall.
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

/// No error has the code 0, and no error of the system's own domain a negative one.
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

/// What takes no more than its name, or "after" and a time.
Fault::Kind takeKind(Words& words) {
    using Kind = Fault::Kind;
    for (const Kind kind : {Kind::silent, Kind::hollow, Kind::noprompt, Kind::crash})
        if (words.takes(nameOf(kind))) return kind;
    return words.takes("after") ? Kind::delay : Kind::error;
}

void mustBeFor(const std::string& request, Fault::Kind kind, const Words& words) {
    const WordList possible = requestWordsFor(kind);
    if (isOneOf(possible, request)) return;
    words.reject("a kind of " + std::string{nameOf(kind)} + " request", request, possible);
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
        mustBeFor(request, fault.kind, words);
        if (isDelay) fault.milliseconds = words.takeDuration();
    }
    return [fault](Machine& machine) { return outcomeOf(machine.orderFault(fault)); };
}

/// A description may hold line ends.
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

constexpr auto detailsOfAuthorize =
    R"(Removes every copy of ID and withdraws its approval. The request finishes with 0, or with 1 if a restart must complete
it. After "sysextctl switch authorization granted", removals no longer wait for an administrator.
)";

constexpr auto detailsOfDisable =
    R"(Does what the switch in System Settings does; the copy of ID is then "activated disabled". No application is notified,
but a properties request reports the change.
)";

constexpr auto detailsOfReset =
    R"(Open requests fail with 11, canceled. Settings stay: the Applications folders, developer mode, the profile, the clock,
and the switches. With --all, only the Applications folders stay.
)";

constexpr auto detailsOfInstall =
    R"(SHORT and BUILD are the two parts of the version. An enabled or disabled copy is also approved. STATE is one of
these, in either wording, and enabled if left out:
)";

constexpr auto detailsOfUninstall =
    R"(TEAM is the team identifier that "list" shows, or - for any. The approval is withdrawn, and the copies disappear with
the next restart. No application is notified, and no administrator has to authorize the removal.
Example: sysextctl uninstall KELVRA0001 com.kelvra.ip-camera.cmio
)";

constexpr auto detailsOfApplications =
    R"(An application can activate extensions only from inside one of these folders. Each FOLDER must exist. The service
knows the extensions of the applications in them, and those that were ever installed.
Example: sysextctl applications /Applications ~/Applications
)";

constexpr auto detailsOfDeveloper =
    R"(In developer mode, an application may be outside the Applications folders, and activating the version that is already
enabled asks the replacement question.
)";

constexpr auto detailsOfProfile =
    R"(FILE is a property list, or a .mobileconfig that contains one, with any of these keys:
  AllowedSystemExtensions    identifiers by team, which are activated without approval
  AllowedTeamIdentifiers     teams whose extensions are all activated without approval
  AllowUserOverrides         if false, activating any other extension fails with 10
  RemovableSystemExtensions  identifiers by team, which are removed without an administrator
A new profile completes the requests that wait for what it allows. "allow", "enable", and "install" do not enable an
extension that it forbids. Without an argument, prints the profile.
Example: sysextctl profile simulator/scenarios/allow-team.mobileconfig
)";

constexpr auto detailsOfSwitch =
    R"(Without VALUE, prints the switch; without NAME, every switch: its name, value, both possible values with the default
first, and meaning, separated by tabs. --reset restores the default of the switch, or of every switch. --json prints an
array of objects with name, value, default, otherwise, and meaning. The switches are
)";

constexpr auto detailsOfFault =
    R"(Orders a fault for the next request. KIND is activate, deactivate, properties, or any. FAULT is one of
  CODE [TEXT] [--domain D]  fails with the error CODE, which is above 0, or in another domain D also below 0
  after TIME                is answered that much later on the simulated clock
  silent                    is never answered
  hollow                    finishes, but nothing runs; not for properties
  noprompt                  waits for the user without saying so; only for activate
  crash                     the service crashes while it works on the request
"list" prints the faults that no request has met yet, in the words that order them; "clear" cancels them all.
Example: sysextctl fault next activate 8 "code signature invalid"
)";

constexpr std::string_view theUser = "The user and the administrator";
constexpr std::string_view theMac = "The Mac and its settings";
constexpr std::string_view theFaults = "Faults";

constexpr Verb table[]{
    {theUser, "allow", "ID", "allows an extension that waits for approval",
     R"(Enables the waiting copy of ID and records the approval for later versions. The request that waits for it finishes
with 0, or with 1 if a restart must complete it.
)",
     ofAnExtension<&Machine::allow>},
    {theUser, "deny", "ID", "denies an extension that waits for approval",
     R"(Removes the waiting copy of ID. The request that waits for it fails with 11, canceled. After
"sysextctl switch denial silence", it is never answered.
)",
     ofAnExtension<&Machine::deny>},
    {theUser, "authorize", "ID", "authorizes the removal of an extension", detailsOfAuthorize,
     ofAnExtension<&Machine::authorize>},
    {theUser, "refuse", "ID", "refuses the removal of an extension",
     R"(Removes nothing. The request fails with 13, authorization required; after "sysextctl switch refusal 11", it fails with
11, canceled.
)",
     ofAnExtension<&Machine::refuse>},
    {theUser, "disable", "ID", "switches an enabled extension off", detailsOfDisable, ofAnExtension<&Machine::disable>},
    {theUser, "enable", "ID", "switches a disabled extension on",
     R"(Enables the disabled copy of ID again, without approval. No application is notified, but a properties request reports
the change.
)",
     ofAnExtension<&Machine::enable>},
    {theMac, "restart", "", "restarts the simulated Mac, which ends every application",
     R"(Copies that are uninstalling disappear. Waiting copies keep waiting, and open requests are never answered. "./run"
starts the application again.
)",
     restart},
    {theMac, "reset", "[--all]", "removes every copy, approval, request, and fault", detailsOfReset, reset, "[--all]",
     Verb::Names::nothing, "--all"},
    {theMac,
     "install",
     "ID SHORT BUILD [STATE]",
     "installs a copy without a request",
     detailsOfInstall,
     install,
     {},
     {},
     {},
     listOfInstallable},
    {theMac, "uninstall", "TEAM ID", "removes an extension without a request", detailsOfUninstall, uninstall},
    {theMac, "applications", "[FOLDER...]", "sets or prints the Applications folders", detailsOfApplications,
     applications, "FOLDER...", Verb::Names::folders},
    {theMac, "developer", "[on|off]", "sets or prints developer mode", detailsOfDeveloper, developer, "on|off"},
    {theMac, "profile", "[FILE | --remove]", "installs, removes, or prints the management profile", detailsOfProfile,
     profile, "FILE | --remove", Verb::Names::file, "--remove"},
    {theMac, "clock", "", "prints the simulated clock, in seconds",
     "The clock stands still until \"sysextctl advance\" moves it.\n", clock, noLine},
    {theMac, "advance", "TIME", "moves the simulated clock forward and prints it",
     "TIME is a number with ms, s, m, h, or d; seconds without a unit.\n", advance},
    {theMac,
     "switch",
     "[NAME] [VALUE | --reset | --json]",
     "sets or prints what public sources leave open",
     detailsOfSwitch,
     setSwitch,
     "NAME VALUE | [NAME] --reset",
     {},
     "--reset",
     listOfSwitches},
    {theFaults,
     "fault",
     "next KIND FAULT | list | clear",
     "orders, prints, or cancels faults of coming requests",
     detailsOfFault,
     fault,
     "clear | next KIND CODE [TEXT] [--domain D] | after TIME | silent | hollow | noprompt | crash",
     {},
     "--domain"},
};

} // namespace

std::string usageOf(std::string_view word, std::string_view usage) {
    return usage.empty() ? std::string{word} : std::string{word} + " " + std::string{usage};
}

std::string lineOf(const Verb& verb) {
    return usageOf(verb.word, verb.line.empty() ? verb.usage : verb.line);
}

std::span<const Verb> verbs() {
    return table;
}

std::string detailsOf(const Verb& verb) {
    return std::string{verb.details} + (verb.list ? verb.list() : std::string{});
}

std::string listOfStates(bool CopyStateRow::*trait) {
    std::string lines;
    for (const CopyStateRow& row : copyStates)
        if (!trait || row.*trait) lines += "  " + padded(std::string{row.condition}, 15) + std::string{row.text} + "\n";
    return lines;
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
    const std::string word = saying.words.empty() ? std::string{} : saying.words.front().text;
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
