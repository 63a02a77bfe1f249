#include "tests/simulator/store/StoreFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace simulator {

StoreFile::StoreFile() {
    std::string pattern = std::filesystem::temp_directory_path() / "store-XXXXXX";
    folder = mkdtemp(pattern.data());
    file = folder / "state" / "store.sqlite";
}

StoreFile::~StoreFile() {
    std::filesystem::remove_all(folder);
}

std::string StoreFile::whyNotOpened() const {
    try {
        const Store store{file};
    } catch (const StoreFailure& failure) {
        return failure.what();
    }
    return "it was opened";
}

void StoreFile::tamper(const std::string& statement) const {
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &handle), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(handle, statement.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(handle);
}

std::string StoreFile::bytes(const std::string& ending) const {
    std::ifstream stream{file.string() + ending, std::ios::binary};
    return {std::istreambuf_iterator<char>{stream}, {}};
}

void StoreFile::write(const std::string& bytes, const std::string& ending) const {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream{file.string() + ending, std::ios::binary} << bytes;
}

std::vector<std::string> StoreFile::names() const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator{file.parent_path()})
        found.push_back(entry.path().filename());
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace simulator
