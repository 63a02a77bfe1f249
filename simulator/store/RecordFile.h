#pragma once

#include <dirent.h>
#include <sqlite3.h>
#include <sys/types.h>

#include <cstdint>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// The store cannot be used. what() is one line that names the file and the reason.
class StoreFailure : public std::runtime_error {
public:
    StoreFailure(const std::string& file, const std::string& reason) : std::runtime_error{file + ": " + reason} {}
};

/// Texts, each of which is there once.
using Records = std::set<std::string>;

/// Records in a file of SQLite's, which says in its head whose it is and of which version. Every member throws
/// StoreFailure; after that the file holds what it held before, and is not to be used any more.
class RecordFile {
public:
    static constexpr std::int64_t version = 2;

    /// Opens what is there; where there is nothing, begins with these records. Makes the folder of the file, too. Until
    /// take() is called nothing is changed of a file that is there, nor of what lies beside it.
    RecordFile(std::string file, const Records& first);

    Records read() const;
    /// From now on the file is this process's, to be changed.
    void take();
    /// All of it happens, or nothing of it. When it returns, a kill of this process loses nothing of it. Fails where
    /// the file has been deleted or replaced, for nobody would find what is kept in it.
    void change(const Records& gone, const Records& come);

    [[noreturn]] void fail(const std::string& reason) const { throw StoreFailure{file_, reason}; }

private:
    struct Close {
        void operator()(sqlite3* file) const { sqlite3_close(file); }
        void operator()(DIR* folder) const { closedir(folder); }
    };

    void lockFolder();
    void begin(const Records& first);
    void sweep() const;
    void open(const std::string& path, int flags);
    void leaveLog(bool leaves);
    void check();
    void write(const Records& gone, const Records& come);
    /// Runs one statement, with a text for its question mark; answers with the first value of each row of the result.
    std::vector<std::string> run(const std::string& statement, const std::string& text = {}) const;
    std::int64_t number(const std::string& pragma) const { return std::stoll(run("PRAGMA " + pragma).at(0)); }
    /// Fails where SQLite answered with anything but this.
    void require(int wanted, int answered) const;
    std::pair<ino_t, ino_t> inodes() const;

    std::string file_;
    /// The locked folder, while the file is being opened: of two services that begin at once one has it.
    std::unique_ptr<DIR, Close> folder_;
    std::unique_ptr<sqlite3, Close> handle_;
    /// Of the file and its log, wherever they lie by now.
    std::pair<ino_t, ino_t> inodes_;
};

} // namespace simulator
