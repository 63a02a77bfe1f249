#include "simulator/store/StateRows.h"

#include <stdexcept>

namespace simulator {

namespace {

enum TableIndex : std::size_t {
    approvalTable = copyTable + 1,
    faultTable,
    extensionTable,
    applicationTable,
    folderTable,
    switchTable,
    machineTable
};

Value text(std::string_view view) {
    return std::string{view};
}

Value number(bool truth) {
    return std::int64_t{truth ? 1 : 0};
}

Row rowOfApproval(const std::pair<std::string, std::string>& approval) {
    return {approval.first, approval.second};
}

Row rowOfFault(const std::pair<const std::int64_t, Fault>& entry) {
    const Fault& fault = entry.second;
    return {entry.first,          text(nameOf(fault.kind)), text(fault.request ? nameOf(*fault.request) : "any"),
            fault.failure.domain, fault.failure.code,       fault.failure.description,
            fault.milliseconds};
}

Row rowOfExtension(const std::pair<const std::string, Extension>& entry) {
    const Extension& extension = entry.second;
    return {entry.first, extension.team, extension.name, text(nameOf(extension.category)), extension.owner};
}

Row rowOfApplication(const std::string& path) {
    return {path};
}

Row rowOfFolder(const std::pair<const std::int64_t, std::string>& entry) {
    return {entry.first, entry.second};
}

Row rowOfSwitch(const std::pair<const Switch, std::string>& entry) {
    return {text(describe(entry.first).name), entry.second};
}

Row rowOfMachine(const std::pair<const std::string, Value>& entry) {
    return {entry.first, entry.second};
}

const auto& approvals(const State& state) {
    return state.approvals;
}

const auto& faults(const State& state) {
    return state.faults;
}

const auto& extensions(const State& state) {
    return state.seen;
}

const auto& applications(const State& state) {
    return state.applications;
}

const auto& switchesOf(const State& state) {
    return state.settings.switches;
}

std::map<std::int64_t, std::string> folders(const State& state) {
    std::map<std::int64_t, std::string> byPosition;
    for (const std::string& folder : state.settings.applicationsFolders)
        byPosition.emplace(byPosition.size(), folder);
    return byPosition;
}

std::map<std::string, Value> machine(const State& state) {
    return {{"clock", state.clock},
            {"last_number", state.lastNumber},
            {"developer_mode", number(state.settings.developerMode)},
            {"profile", state.settings.profile.source}};
}

void copyFolders(const State& from, State& to) {
    to.settings.applicationsFolders = from.settings.applicationsFolders;
}

void copySwitches(const State& from, State& to) {
    to.settings.switches = from.settings.switches;
}

void copyMachine(const State& from, State& to) {
    to.clock = from.clock;
    to.lastNumber = from.lastNumber;
    to.settings.developerMode = from.settings.developerMode;
    to.settings.profile.source = from.settings.profile.source;
}

template <auto member>
void copyMember(const State& from, State& to) {
    to.*member = from.*member;
}

template <typename Key, typename Entry>
const Key& keyOf(const std::pair<const Key, Entry>& entry) {
    return entry.first;
}

const std::string& keyOf(const std::string& entry) {
    return entry;
}

const std::pair<std::string, std::string>& keyOf(const std::pair<std::string, std::string>& entry) {
    return entry;
}

/// Makes rows only of what differs.
template <auto entriesOf, auto rowOfEntry>
Changes changesOf(const State* before, const State& now) {
    using Entries = std::decay_t<decltype(entriesOf(now))>;
    const Entries old = before ? entriesOf(*before) : Entries{};
    const Entries& current = entriesOf(now);
    Changes changes;
    for (const auto& entry : old) {
        if (current.count(keyOf(entry)) == 0) changes.gone.push_back(rowOfEntry(entry));
    }
    for (const auto& entry : current) {
        const auto found = old.find(keyOf(entry));
        if (found == old.end() || *found != entry) changes.put.push_back(rowOfEntry(entry));
    }
    return changes;
}

template <auto entriesOf>
bool areSame(const State& one, const State& other) {
    return entriesOf(one) == entriesOf(other);
}

template <auto entriesOf, auto rowOfEntry>
constexpr Part partOf(TableIndex table, void (*copy)(const State&, State&)) {
    return {table, areSame<entriesOf>, changesOf<entriesOf, rowOfEntry>, copy};
}

/// Takes a row's values one by one. Throws where one is of the wrong kind or missing.
class Reader {
public:
    explicit Reader(const Row& row) : row_{row} {}

    const std::string& text() { return std::get<std::string>(row_.at(position_++)); }
    std::int64_t number() { return std::get<std::int64_t>(row_.at(position_++)); }
    bool truth() { return number() != 0; }

private:
    const Row& row_;
    std::size_t position_ = 0;
};

Copy copyOf(const Row& row) {
    Reader reader{row};
    Copy copy;
    copy.number = reader.number();
    copy.extension.team = reader.text();
    copy.extension.identifier = reader.text();
    copy.extension.name = reader.text();
    copy.extension.category = categoryNamed(reader.text()).value();
    copy.extension.owner = reader.text();
    copy.version.shortVersion = reader.text();
    copy.version.version = reader.text();
    copy.application = reader.text();
    copy.state = copyStateWithText(reader.text()).value();
    copy.lingered = reader.truth();
    return copy;
}

Fault faultOf(const Row& row) {
    Reader reader{row};
    Fault fault;
    reader.number();
    fault.kind = faultKindNamed(reader.text()).value();
    const std::string& request = reader.text();
    if (request != "any") fault.request = requestKindNamed(request).value();
    fault.failure.domain = reader.text();
    fault.failure.code = reader.number();
    fault.failure.description = reader.text();
    fault.milliseconds = reader.number();
    return fault;
}

Extension extensionOf(const Row& row) {
    Reader reader{row};
    Extension extension;
    extension.identifier = reader.text();
    extension.team = reader.text();
    extension.name = reader.text();
    extension.category = categoryNamed(reader.text()).value();
    extension.owner = reader.text();
    return extension;
}

Settings settingsOf(const StateRows& rows) {
    Settings settings;
    settings.applicationsFolders.clear();
    for (const auto& [key, row] : rows[folderTable]) {
        settings.applicationsFolders.push_back(std::get<std::string>(row.at(1)));
    }
    for (const auto& [key, row] : rows[switchTable]) {
        settings.set(switchNamed(std::get<std::string>(row.at(0))).value(), std::get<std::string>(row.at(1)));
    }
    return settings;
}

void readMachine(State& state, const std::map<Row, Row>& rows) {
    const auto valueOf = [&](std::string_view name) { return rows.at({text(name)}).at(1); };
    state.clock = std::get<std::int64_t>(valueOf("clock"));
    state.lastNumber = std::get<std::int64_t>(valueOf("last_number"));
    state.settings.developerMode = std::get<std::int64_t>(valueOf("developer_mode")) != 0;
    state.settings.profile.source = std::get<std::string>(valueOf("profile"));
}

State read(const StateRows& rows) {
    State state;
    for (const auto& [key, row] : rows[copyTable]) {
        Copy copy = copyOf(row);
        const std::int64_t number = copy.number;
        state.copies.emplace(number, std::move(copy));
    }
    for (const auto& [key, row] : rows[approvalTable]) {
        state.approvals.insert({std::get<std::string>(row.at(0)), std::get<std::string>(row.at(1))});
    }
    for (const auto& [key, row] : rows[faultTable]) {
        state.faults.emplace(std::get<std::int64_t>(row.at(0)), faultOf(row));
    }
    for (const auto& [key, row] : rows[extensionTable]) {
        Extension extension = extensionOf(row);
        std::string identifier = extension.identifier;
        state.seen.emplace(std::move(identifier), std::move(extension));
    }
    for (const auto& [key, row] : rows[applicationTable]) {
        state.applications.insert(std::get<std::string>(row.at(0)));
    }
    state.settings = settingsOf(rows);
    readMachine(state, rows[machineTable]);
    return state;
}

} // namespace

Row rowOf(const Copy& copy) {
    const Extension& extension = copy.extension;
    return {copy.number,
            extension.team,
            extension.identifier,
            extension.name,
            text(nameOf(extension.category)),
            extension.owner,
            copy.version.shortVersion,
            copy.version.version,
            copy.application,
            text(describe(copy.state).text),
            number(copy.lingered)};
}

const std::array<Part, tables.size() - 1>& parts() {
    static constexpr std::array all{
        partOf<approvals, rowOfApproval>(approvalTable, copyMember<&State::approvals>),
        partOf<faults, rowOfFault>(faultTable, copyMember<&State::faults>),
        partOf<extensions, rowOfExtension>(extensionTable, copyMember<&State::seen>),
        partOf<applications, rowOfApplication>(applicationTable, copyMember<&State::applications>),
        partOf<folders, rowOfFolder>(folderTable, copyFolders),
        partOf<switchesOf, rowOfSwitch>(switchTable, copySwitches),
        partOf<machine, rowOfMachine>(machineTable, copyMachine),
    };
    return all;
}

std::optional<State> stateOf(const StateRows& rows) {
    try {
        return read(rows);
    } catch (const std::bad_variant_access&) {
        return std::nullopt;
    } catch (const std::bad_optional_access&) {
        return std::nullopt;
    } catch (const std::out_of_range&) {
        return std::nullopt;
    }
}

} // namespace simulator
