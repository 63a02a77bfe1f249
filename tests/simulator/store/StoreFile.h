#pragma once

#include "simulator/store/RecordFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>

namespace simulator {

/// A place for a store, at a path of which only the first folder is there. It is in memory where that can be.
class AStoreFile : public testing::Test {
protected:
    AStoreFile() {
        const std::filesystem::path memory = "/dev/shm";
        const bool hasMemory = std::filesystem::exists(memory);
        std::string pattern = (hasMemory ? memory : std::filesystem::temp_directory_path()) / "store-XXXXXX";
        folder = mkdtemp(pattern.data());
        file = folder / "state" / "store.sqlite";
    }
    ~AStoreFile() override { std::filesystem::remove_all(folder); }

    /// Runs statements on the file as another program would, and before it closes it whatever else it does.
    void tamper(
        const std::string& statements, const std::function<void()>& deed = [] {}) const {
        std::filesystem::create_directories(file.parent_path());
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(handle, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        deed();
        sqlite3_close(handle);
    }

    /// The reason for which this fails, from a line that names the file.
    std::string whyNot(const std::function<void()>& deed) const {
        try {
            deed();
        } catch (const StoreFailure& failure) {
            const std::string line = failure.what();
            const std::string beginning = file.string() + ": ";
            return line.rfind(beginning, 0) == 0 ? line.substr(beginning.size()) : "not of this file: " + line;
        }
        return "nothing";
    }

    /// Exists, is empty at first, and is removed at the end.
    std::filesystem::path folder;
    /// Where the store belongs. Neither it nor the folder around it exists until something makes them.
    std::filesystem::path file;
};

} // namespace simulator
