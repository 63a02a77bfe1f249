#include "simulator/store/Store.h"

#include "simulator/store/FileHeader.h"
#include "simulator/store/StoreFailure.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

/// Says in the file's header whose it is.
constexpr std::int64_t applicationId = 0x4b53494d;

std::string keyColumns(const Table& table) {
    std::size_t end = 0;
    for (std::size_t key = 0; key < table.keys; ++key)
        end = table.columns.find(',', end + (key ? 1 : 0));
    return std::string{table.columns.substr(0, end)};
}

std::size_t columnCount(const Table& table) {
    return static_cast<std::size_t>(std::count(table.columns.begin(), table.columns.end(), ',')) + 1;
}

std::string placeholders(std::size_t count) {
    std::string text = "?";
    while (--count > 0)
        text += ", ?";
    return text;
}

std::string createStatement(const Table& table) {
    return "CREATE TABLE " + std::string{table.name} + " (" + std::string{table.columns} + ", PRIMARY KEY (" +
           keyColumns(table) + ")) WITHOUT ROWID;";
}

std::string selectStatement(const Table& table) {
    return "SELECT " + std::string{table.columns} + " FROM " + std::string{table.name};
}

std::string replaceStatement(const Table& table) {
    return "REPLACE INTO " + std::string{table.name} + " VALUES (" + placeholders(columnCount(table)) + ")";
}

std::string deleteStatement(const Table& table) {
    return "DELETE FROM " + std::string{table.name} + " WHERE (" + keyColumns(table) + ") = (" +
           placeholders(table.keys) + ")";
}

void write(Database& database, const Table& table, const Changes& changes) {
    for (const Row& row : changes.gone) {
        const auto keys = static_cast<Row::difference_type>(table.keys);
        database.run(deleteStatement(table), {row.begin(), row.begin() + keys});
    }
    for (const Row& row : changes.put)
        database.run(replaceStatement(table), row);
}

const Copy* find(const State& state, std::int64_t number) {
    const auto found = state.copies.find(number);
    return found == state.copies.end() ? nullptr : &found->second;
}

bool isSameCopy(const State& one, const State& other, std::int64_t number) {
    const Copy* const first = find(one, number);
    const Copy* const second = find(other, number);
    return first && second ? *first == *second : first == second;
}

std::set<std::int64_t> changedCopies(const State& before, const State& now, const std::set<std::int64_t>& touched) {
    std::set<std::int64_t> changed;
    for (const std::int64_t number : touched) {
        if (!isSameCopy(before, now, number)) changed.insert(number);
    }
    return changed;
}

bool areSameParts(const State& one, const State& other) {
    const auto& all = parts();
    return std::all_of(all.begin(), all.end(), [&](const Part& part) { return part.isSame(one, other); });
}

void create(Database& database) {
    database.transaction([&] {
        for (const Table& table : tables)
            database.execute(createStatement(table));
        database.execute("PRAGMA application_id = " + std::to_string(applicationId));
        database.execute("PRAGMA user_version = " + std::to_string(Store::version));
        for (const Part& part : parts())
            write(database, tables[part.table], part.changes(nullptr, State{}));
    });
}

/// A store is in its place whole or not at all, so that an empty file there is none that was only begun.
void begin(const StoreFolder& folder) {
    folder.sweep();
    try {
        Database database{folder.beginning(), folder.store()};
        create(database);
    } catch (const StoreFailure&) {
        folder.sweep();
        throw;
    }
    folder.putInPlace();
}

/// Whether this simulator wrote it.
void checkOrigin(const StoreFolder& folder, const FileHeader& header) {
    const auto fail = [&](const std::string& reason) { throw StoreFailure{folder.store(), reason}; };
    if (header.applicationId != applicationId) fail("it is no store of the simulator");
    if (header.version > Store::version) {
        fail("it was written by a newer simulator (version " + std::to_string(header.version) + ", this one knows " +
             std::to_string(Store::version) + ")");
    }
    if (header.version < Store::version) fail("it is of an unknown version");
}

void checkFile(const StoreFolder& folder) {
    const std::filesystem::path file = folder.store();
    std::error_code none;
    if (!std::filesystem::is_regular_file(file, none)) throw StoreFailure{file, "it cannot be opened"};
    if (std::filesystem::file_size(file, none) == 0) throw StoreFailure{file, "it is damaged: it is empty"};
    const auto header = readFileHeader(file);
    if (header && !folder.hasLog()) checkOrigin(folder, *header);
}

/// Nothing of the file and its log is changed before it is known to be one of this simulator's.
Database open(const StoreFolder& folder) {
    if (!folder.isTaken()) begin(folder);
    checkFile(folder);
    Database database{folder.store()};
    if (folder.hasLog()) database.leaveLog();
    checkOrigin(folder, {database.number("PRAGMA application_id"), database.number("PRAGMA user_version")});
    return database;
}

} // namespace

Store::Store(const std::string& file) : Store{StoreFolder{file}} {
}

/// Where it fails, the file is as it was.
Store::Store(const StoreFolder& folder) : database_{open(folder)} {
    checkContents();
    kept_ = read();
    database_.take();
}

void Store::checkContents() {
    std::string verdict;
    database_.query("PRAGMA integrity_check(1)", {}, [&](const Row& row) { verdict = std::get<std::string>(row[0]); });
    if (verdict != "ok") database_.fail("it is damaged");
}

State Store::read() {
    StateRows rows;
    for (std::size_t index = 0; index < tables.size(); ++index) {
        const auto keys = static_cast<Row::difference_type>(tables[index].keys);
        database_.query(selectStatement(tables[index]), {}, [&](Row row) {
            Row key{row.begin(), row.begin() + keys};
            rows[index].emplace(std::move(key), std::move(row));
        });
    }
    auto state = stateOf(rows);
    if (!state) database_.fail("it is damaged: a row makes no sense");
    return std::move(*state);
}

void Store::save(const State& state) {
    std::set<std::int64_t> all;
    for (const auto& [number, copy] : kept_.copies)
        all.insert(number);
    for (const auto& [number, copy] : state.copies)
        all.insert(number);
    save(state, all);
}

void Store::save(const State& state, const std::set<std::int64_t>& touched) {
    const std::set<std::int64_t> changed = changedCopies(kept_, state, touched);
    if (changed.empty() && areSameParts(kept_, state)) return;
    database_.transaction([&] {
        writeCopies(state, changed);
        writeParts(state);
    });
    remember(state, changed);
}

void Store::writeCopies(const State& state, const std::set<std::int64_t>& changed) {
    for (const std::int64_t number : changed) {
        if (const Copy* const copy = find(state, number)) {
            database_.run(replaceStatement(tables[copyTable]), rowOf(*copy));
        } else {
            database_.run(deleteStatement(tables[copyTable]), {number});
        }
    }
}

void Store::writeParts(const State& state) {
    for (const Part& part : parts()) {
        if (!part.isSame(kept_, state)) write(database_, tables[part.table], part.changes(&kept_, state));
    }
}

void Store::remember(const State& state, const std::set<std::int64_t>& changed) {
    for (const std::int64_t number : changed) {
        if (const Copy* const copy = find(state, number)) {
            kept_.copies.insert_or_assign(number, *copy);
        } else {
            kept_.copies.erase(number);
        }
    }
    for (const Part& part : parts()) {
        if (!part.isSame(kept_, state)) part.copy(state, kept_);
    }
}

} // namespace simulator
