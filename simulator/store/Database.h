#pragma once

#include "simulator/store/StateRows.h"

#include <sqlite3.h>

#include <functional>
#include <memory>
#include <string>

namespace simulator {

/// A file of SQLite's, for this process alone. Every member throws StoreFailure.
class Database {
public:
    /// Opens a file that is there.
    explicit Database(std::string file);
    /// Makes a file. name: what the failures call it.
    Database(const std::string& file, std::string name);

    /// Has SQLite leave the log beside the file as it is when the file is closed. To be called before anything is read.
    void leaveLog();
    /// From now on this process alone has the file, and every transaction outlives a kill of the process. The log
    /// belongs to it like the rest.
    void take();

    /// Statements without results, separated by semicolons.
    void execute(const std::string& statements);
    /// Calls visit with each row of the result.
    void query(const std::string& statement, const Row& arguments, const std::function<void(Row)>& visit);
    void run(const std::string& statement, const Row& arguments);
    /// The first value of the first row of the result; 0 if it is no number.
    std::int64_t number(const std::string& statement);

    /// All of it happens, or nothing of it.
    void transaction(const std::function<void()>& changes);

    [[noreturn]] void fail(const std::string& reason) const;

private:
    struct Close {
        void operator()(sqlite3* handle) const { sqlite3_close(handle); }
    };
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
    };
    using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

    void open(const std::string& file, int flags);
    Statement prepare(const std::string& statement, const Row& arguments);
    void setLeavesLog(bool leaves);
    [[noreturn]] void failAsReported(int code) const;

    std::string name_;
    std::unique_ptr<sqlite3, Close> handle_;
};

} // namespace simulator
