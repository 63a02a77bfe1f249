#include "simulator/store/RecordFile.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace simulator {

namespace {

namespace fs = std::filesystem;

/// Says in the file's head whose it is.
constexpr std::int64_t applicationId = 0x4b53494d;

struct Reason {
    int code;
    const char* text;
};

constexpr std::array reasons{Reason{SQLITE_BUSY, "it is in use by another service"},
                             Reason{SQLITE_READONLY, "it cannot be written"},
                             Reason{SQLITE_CANTOPEN, "it cannot be opened"},
                             Reason{SQLITE_FULL, "the disk is full"},
                             Reason{SQLITE_NOTADB, "it is no store of the simulator"},
                             Reason{SQLITE_CORRUPT, "it is damaged"},
                             Reason{SQLITE_IOERR, "the disk cannot be read or written"}};

/// No statement is at fault: where SQLite finds an error in one, a table or a column that it names is missing.
std::string reasonOf(int code, const std::string& message) {
    const auto* const found = std::find_if(reasons.begin(), reasons.end(),
                                           [&](const Reason& reason) { return reason.code == (code & 0xff); });
    if (found != reasons.end()) return found->text;
    return code == SQLITE_ERROR ? "it is damaged: " + message : message;
}

/// Nothing but zeros where there is no file.
struct stat statusOf(const std::string& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0) status = {};
    return status;
}

std::string firstValue(sqlite3_stmt* statement) {
    const void* const bytes = sqlite3_column_blob(statement, 0);
    const int length = sqlite3_column_bytes(statement, 0);
    return bytes ? std::string{static_cast<const char*>(bytes), static_cast<std::size_t>(length)} : std::string{};
}

} // namespace

RecordFile::RecordFile(std::string file, const Records& first) : file_{std::move(file)} {
    lockFolder();
    std::error_code none;
    if (!fs::exists(fs::symlink_status(file_, none))) begin(first);
    if (!fs::is_regular_file(file_, none)) fail("it cannot be opened");
    if (fs::is_empty(file_, none)) fail("it is damaged: it is empty");
    const bool hasLog = statusOf(file_ + "-wal").st_size > 0;
    open(file_, SQLITE_OPEN_READWRITE);
    leaveLog(hasLog);
    check();
}

void RecordFile::lockFolder() {
    const fs::path folder = fs::path{file_}.parent_path();
    std::error_code problem;
    fs::create_directories(folder, problem);
    if (problem) fail("its folder cannot be created: " + problem.message());
    folder_.reset(opendir(folder.c_str()));
    const auto message = [] { return std::generic_category().message(errno); };
    if (!folder_) fail("its folder cannot be opened: " + message());
    if (flock(dirfd(folder_.get()), LOCK_EX | LOCK_NB) == 0) return;
    fail(errno == EWOULDBLOCK ? reasonOf(SQLITE_BUSY, {}) : "its folder cannot be locked: " + message());
}

/// The file is in its place whole or not at all, so that an empty one there is none that was only begun.
void RecordFile::begin(const Records& first) {
    const std::string beginning = file_ + ".new";
    sweep();
    try {
        open(beginning, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        run("PRAGMA application_id = " + std::to_string(applicationId));
        run("PRAGMA user_version = " + std::to_string(version));
        run("CREATE TABLE record (text TEXT PRIMARY KEY) WITHOUT ROWID");
        write({}, first);
        handle_.reset();
    } catch (const StoreFailure&) {
        handle_.reset();
        sweep();
        throw;
    }
    std::error_code problem;
    fs::rename(beginning, file_, problem);
    if (problem) fail("it cannot be put in its place: " + problem.message());
}

/// Takes away what is left where the file is not: a beginning that came to nothing, and the logs of a file that is no
/// more, which would be taken for those of the next one.
void RecordFile::sweep() const {
    for (const auto* const ending : {"-wal", "-shm", "-journal", ".new", ".new-wal", ".new-shm", ".new-journal"}) {
        std::error_code problem;
        fs::remove(file_ + ending, problem);
        if (problem) fail("what is left beside it cannot be removed: " + problem.message());
    }
}

void RecordFile::open(const std::string& path, int flags) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(path.c_str(), &handle, flags, nullptr);
    handle_.reset(handle);
    require(SQLITE_OK, code);
    if (sqlite3_db_readonly(handle, "main") != 0) fail(reasonOf(SQLITE_READONLY, {}));
    run("PRAGMA locking_mode = EXCLUSIVE");
}

/// Whether the log beside the file stays as it is when the file is closed.
void RecordFile::leaveLog(bool leaves) {
    sqlite3_db_config(handle_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, leaves ? 1 : 0, nullptr);
}

void RecordFile::check() {
    if (number("application_id") != applicationId) fail(reasonOf(SQLITE_NOTADB, {}));
    const std::int64_t found = number("user_version");
    if (found > version) {
        fail("it was written by a newer simulator (version " + std::to_string(found) + ", this one knows " +
             std::to_string(version) + ")");
    }
    if (found < version) fail("it was written by an older simulator; to begin anew, delete it");
    if (run("PRAGMA integrity_check(1)") != std::vector<std::string>{"ok"}) fail(reasonOf(SQLITE_CORRUPT, {}));
}

/// The lock stays with this process. A transaction in the write-ahead log outlives a kill of the process.
void RecordFile::take() {
    run("PRAGMA synchronous = NORMAL");
    run("PRAGMA journal_mode = WAL");
    write({}, {});
    leaveLog(false);
    folder_.reset();
    inodes_ = inodes();
}

Records RecordFile::read() const {
    const std::vector<std::string> records = run("SELECT text FROM record");
    return {records.begin(), records.end()};
}

void RecordFile::write(const Records& gone, const Records& come) {
    run("BEGIN IMMEDIATE");
    for (const std::string& record : gone)
        run("DELETE FROM record WHERE text = ?", record);
    for (const std::string& record : come)
        run("REPLACE INTO record VALUES (?)", record);
    run("COMMIT");
}

void RecordFile::change(const Records& gone, const Records& come) {
    write(gone, come);
    const auto now = inodes();
    if (now == inodes_) return;
    std::error_code none;
    const bool hasLog = now.second == inodes_.second; // with which another file in its place is not to be read
    if (hasLog && now.first != inodes_.first) fs::remove(file_ + "-wal", none);
    fail("it was deleted or replaced while it was in use");
}

std::vector<std::string> RecordFile::run(const std::string& statement, const std::string& text) const {
    sqlite3_stmt* prepared = nullptr;
    const int code = sqlite3_prepare_v2(handle_.get(), statement.c_str(), -1, &prepared, nullptr);
    const std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> owner{prepared, &sqlite3_finalize};
    require(SQLITE_OK, code);
    if (sqlite3_bind_parameter_count(prepared) == 1)
        require(SQLITE_OK, sqlite3_bind_text64(prepared, 1, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8));
    std::vector<std::string> values;
    int step = sqlite3_step(prepared);
    for (; step == SQLITE_ROW; step = sqlite3_step(prepared))
        values.push_back(firstValue(prepared));
    require(SQLITE_DONE, step);
    return values;
}

void RecordFile::require(int wanted, int answered) const {
    if (answered != wanted) fail(reasonOf(answered, sqlite3_errmsg(handle_.get())));
}

std::pair<ino_t, ino_t> RecordFile::inodes() const {
    return {statusOf(file_).st_ino, statusOf(file_ + "-wal").st_ino};
}

} // namespace simulator
