#include "simulator/store/Store.h"

#include <algorithm>
#include <iomanip>
#include <iterator>
#include <optional>
#include <sstream>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

// A record is a line: its kind, and then its fields, texts among them in quotes. For example:
//
//     approval "KELVRA0001" "com.kelvra.ip-camera.cmio"
//     clock 5400000

namespace simulator {

namespace {

using std::tie;

std::string_view nameOf(CopyState state) {
    return describe(state).text;
}

std::string_view nameOf(Switch which) {
    return describe(which).name;
}

template <typename Word>
using Named = std::optional<Word> (*)(std::string_view name);
constexpr std::tuple words{Named<Category>{categoryNamed}, Named<CopyState>{copyStateWithText},
                           Named<Fault::Kind>{faultKindNamed}, Named<RequestKind>{requestKindNamed},
                           Named<Switch>{switchNamed}};

// A field is put into a record and got from it. One that is none that is put there fails the stream -----------------

bool isAtEnd(std::istream& record) {
    return record.eof() || record.peek() == EOF;
}

template <typename Value>
void put(std::ostream& record, const Value& value) {
    if constexpr (std::is_enum_v<Value>) {
        record << ' ' << std::quoted(nameOf(value));
    } else {
        record << ' ' << value;
    }
}

template <typename Value>
void get(std::istream& record, Value& value) {
    if constexpr (std::is_enum_v<Value>) {
        std::string name;
        record >> std::quoted(name);
        const std::optional<Value> found = std::get<Named<Value>>(words)(name);
        found ? void(value = *found) : record.setstate(std::ios::failbit);
    } else {
        record >> value;
    }
}

void put(std::ostream& record, const std::string& text) {
    record << ' ' << std::quoted(text);
}

void get(std::istream& record, std::string& text) {
    record >> std::quoted(text);
}

template <typename Value>
void put(std::ostream& record, const std::optional<Value>& value) {
    if (value) put(record, *value);
}

template <typename Value>
void get(std::istream& record, std::optional<Value>& value) {
    if (!isAtEnd(record)) get(record, value.emplace());
}

void put(std::ostream& record, const std::vector<std::string>& texts) {
    for (const std::string& text : texts)
        put(record, text);
}

void get(std::istream& record, std::vector<std::string>& texts) {
    texts.clear();
    while (record && !isAtEnd(record))
        get(record, texts.emplace_back());
}

template <typename... Fields>
std::string recordOf(const std::string& kind, const std::tuple<Fields...>& fields) {
    std::ostringstream record;
    record << kind;
    std::apply([&](const auto&... field) { (put(record, field), ...); }, fields);
    return record.str();
}

/// Says whether they are all there, and nothing else.
template <typename... Fields>
bool read(std::istream& record, const std::tuple<Fields...>& fields) {
    std::apply([&](auto&... field) { (get(record, field), ...); }, fields);
    return record && isAtEnd(record);
}

// The fields of the larger ones --------------------------------------------------------------------------------------

auto fieldsOf(auto& copy) {
    auto& extension = copy.extension;
    auto& version = copy.version;
    return tie(copy.number, extension.team, extension.identifier, extension.name, extension.category, extension.owner,
               version.shortVersion, version.version, copy.application, copy.state, copy.lingered);
}

/// The request stands at the end, where there may be none.
auto fieldsOf(auto& number, auto& fault) {
    auto& failure = fault.failure;
    return tie(number, fault.kind, failure.domain, failure.code, failure.description, fault.milliseconds,
               fault.request);
}

auto fieldsOfExtension(auto& extension) {
    return tie(extension.identifier, extension.team, extension.name, extension.category, extension.owner);
}

/// Each is kept under its name. Of the management profile there is the source alone.
auto values(auto& state) {
    auto& settings = state.settings;
    return std::tuple{
        std::pair{"clock", tie(state.clock)},
        std::pair{"last-number", tie(state.lastNumber)},
        std::pair{"developer-mode", tie(settings.developerMode)},
        std::pair{"applications-folders", tie(settings.applicationsFolders)},
        std::pair{"profile", tie(settings.profile.source)},
    };
}

Records recordsWithoutCopies(const State& state) {
    Records records;
    const auto add = [&](const char* kind, const auto& fields) { records.insert(recordOf(kind, fields)); };
    for (const auto& [team, identifier] : state.approvals)
        add("approval", tie(team, identifier));
    for (const auto& [number, fault] : state.faults)
        add("fault", fieldsOf(number, fault));
    for (const auto& [identifier, extension] : state.seen)
        add("extension", fieldsOfExtension(extension));
    for (const std::string& application : state.applications)
        add("application", tie(application));
    for (const auto& [which, value] : state.settings.switches)
        add("switch", tie(which, value));
    std::apply([&](const auto&... value) { (add(value.first, value.second), ...); }, values(state));
    return records;
}

/// Says whether it is a record that is written here, and none of the same stands there already.
bool addTo(State& state, const std::string& line) {
    std::istringstream record{line};
    std::string kind;
    record >> kind;
    Copy copy;
    Fault fault;
    Extension extension;
    Switch which{};
    std::int64_t number = 0;
    std::string text;
    std::string other;
    const auto reads = [&](const char* wanted, const auto& fields) { return kind == wanted && read(record, fields); };
    if (reads("copy", fieldsOf(copy))) return state.copies.emplace(copy.number, copy).second;
    if (reads("approval", tie(text, other))) return state.approvals.emplace(text, other).second;
    if (reads("fault", fieldsOf(number, fault))) return state.faults.emplace(number, fault).second;
    if (reads("extension", fieldsOfExtension(extension)))
        return state.seen.emplace(extension.identifier, extension).second;
    if (reads("application", tie(text))) return state.applications.insert(text).second;
    if (reads("switch", tie(which, text))) return state.settings.switches.emplace(which, text).second;
    return std::apply([&](const auto&... one) { return (reads(one.first, one.second) || ...); }, values(state));
}

/// Those of the one that are not in the other.
Records differenceOf(const Records& one, const Records& other) {
    Records records;
    std::set_difference(one.begin(), one.end(), other.begin(), other.end(), std::inserter(records, records.end()));
    return records;
}

} // namespace

Store::Store(const std::string& file) : file_{file, recordsWithoutCopies(State{})} {
    const State state = load();
    others_ = recordsWithoutCopies(state);
    for (const auto& [number, copy] : state.copies)
        copies_[number] = recordOf("copy", fieldsOf(copy));
    file_.take();
}

State Store::load() const {
    State state;
    const Records records = file_.read();
    const bool areSound =
        std::all_of(records.begin(), records.end(), [&](const auto& record) { return addTo(state, record); });
    const bool areAll = records.size() == recordsWithoutCopies(state).size() + state.copies.size();
    if (!areSound || !areAll) file_.fail("it is damaged: a row makes no sense");
    return state;
}

void Store::save(const State& state, const std::set<std::int64_t>& touched) {
    Records now = recordsWithoutCopies(state);
    Records gone = differenceOf(others_, now);
    Records come = differenceOf(now, others_);
    others_ = std::move(now);
    for (const std::int64_t number : touched) {
        if (auto kept = copies_.extract(number)) gone.insert(kept.mapped());
        const auto copy = state.copies.find(number);
        if (copy == state.copies.end()) continue;
        come.insert(copies_[number] = recordOf("copy", fieldsOf(copy->second)));
    }
    if (!gone.empty() || !come.empty()) file_.change(gone, come);
}

} // namespace simulator
