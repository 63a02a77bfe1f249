#include "simulator/store/Database.h"

#include "simulator/store/StoreFailure.h"

#include <utility>

namespace simulator {

namespace {

struct Bind {
    sqlite3_stmt* statement;
    int position;

    int operator()(std::int64_t number) const { return sqlite3_bind_int64(statement, position, number); }
    int operator()(const std::string& text) const {
        return sqlite3_bind_text64(statement, position, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
};

Value valueAt(sqlite3_stmt* statement, int column) {
    if (sqlite3_column_type(statement, column) == SQLITE_INTEGER) return sqlite3_column_int64(statement, column);
    const void* const bytes = sqlite3_column_blob(statement, column);
    const int length = sqlite3_column_bytes(statement, column);
    return bytes ? std::string{static_cast<const char*>(bytes), static_cast<std::size_t>(length)} : std::string{};
}

std::string reasonOf(int code, const char* message) {
    switch (code & 0xff) {
    case SQLITE_BUSY:
        return "it is in use by another service";
    case SQLITE_READONLY:
        return "it cannot be written";
    case SQLITE_CANTOPEN:
        return "it cannot be opened";
    case SQLITE_FULL:
        return "the disk is full";
    case SQLITE_NOTADB:
        return "it is no store of the simulator";
    case SQLITE_CORRUPT:
        return "it is damaged";
    case SQLITE_IOERR:
        return "the disk cannot be read or written";
    case SQLITE_ERROR: // no statement is at fault: a table or a column that it names is missing
        return std::string{"it is damaged: "} + message;
    default:
        return message;
    }
}

} // namespace

Database::Database(std::string file) : name_{std::move(file)} {
    open(name_, SQLITE_OPEN_READWRITE);
}

Database::Database(const std::string& file, std::string name) : name_{std::move(name)} {
    open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

void Database::open(const std::string& file, int flags) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &handle, flags, nullptr);
    handle_.reset(handle);
    if (code != SQLITE_OK) failAsReported(code);
    sqlite3_extended_result_codes(handle, 1);
    if (sqlite3_db_readonly(handle_.get(), "main") != 0) fail("it cannot be written");
    execute("PRAGMA locking_mode = EXCLUSIVE");
}

void Database::setLeavesLog(bool leaves) {
    sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, leaves ? 1 : 0, nullptr);
}

void Database::leaveLog() {
    setLeavesLog(true);
}

/// The lock stays with this process. A transaction in the write-ahead log outlives a kill of the process.
void Database::take() {
    execute("PRAGMA synchronous = NORMAL");
    run("PRAGMA journal_mode = WAL", {});
    transaction([] {});
    setLeavesLog(false);
}

void Database::execute(const std::string& statements) {
    const int code = sqlite3_exec(handle_.get(), statements.c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) failAsReported(code);
}

Database::Statement Database::prepare(const std::string& statement, const Row& arguments) {
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(handle_.get(), statement.c_str(), -1, &prepared, nullptr);
    Statement owner{prepared};
    if (code != SQLITE_OK) failAsReported(code);
    int position = 0;
    for (const Value& argument : arguments) {
        const int bound = std::visit(Bind{prepared, ++position}, argument);
        if (bound != SQLITE_OK) failAsReported(bound);
    }
    return owner;
}

void Database::query(const std::string& statement, const Row& arguments, const std::function<void(Row)>& visit) {
    const Statement prepared = prepare(statement, arguments);
    int code = sqlite3_step(prepared.get());
    for (; code == SQLITE_ROW; code = sqlite3_step(prepared.get())) {
        Row row;
        for (int column = 0; column < sqlite3_column_count(prepared.get()); ++column) {
            row.push_back(valueAt(prepared.get(), column));
        }
        visit(std::move(row));
    }
    if (code != SQLITE_DONE) failAsReported(code);
}

void Database::run(const std::string& statement, const Row& arguments) {
    query(statement, arguments, [](const Row&) {});
}

std::int64_t Database::number(const std::string& statement) {
    std::int64_t found = 0;
    query(statement, {}, [&](const Row& row) {
        if (const auto* const number = std::get_if<std::int64_t>(&row.front())) found = *number;
    });
    return found;
}

void Database::transaction(const std::function<void()>& changes) {
    execute("BEGIN IMMEDIATE");
    try {
        changes();
        execute("COMMIT");
    } catch (...) {
        sqlite3_exec(handle_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

void Database::fail(const std::string& reason) const {
    throw StoreFailure{name_, reason};
}

void Database::failAsReported(int code) const {
    fail(reasonOf(code, sqlite3_errmsg(handle_.get())));
}

} // namespace simulator
