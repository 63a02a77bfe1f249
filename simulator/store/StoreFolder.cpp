#include "simulator/store/StoreFolder.h"

#include "simulator/store/StoreFailure.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace simulator {

namespace {

constexpr std::array leftovers{"-wal", "-shm", "-journal", ".new", ".new-wal", ".new-shm", ".new-journal"};

std::string messageOf(int error) {
    return std::generic_category().message(error);
}

} // namespace

StoreFolder::StoreFolder(std::string store) : store_{std::move(store)} {
    const auto folder = std::filesystem::path{store_}.parent_path();
    std::error_code problem;
    std::filesystem::create_directories(folder, problem);
    if (problem) fail("its folder cannot be created: " + problem.message());
    folder_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder_ == -1) fail("its folder cannot be opened: " + messageOf(errno));
    if (flock(folder_, LOCK_EX | LOCK_NB) == 0) return;
    const int error = errno;
    close(folder_);
    fail(error == EWOULDBLOCK ? "it is in use by another service" : "its folder cannot be locked: " + messageOf(error));
}

StoreFolder::~StoreFolder() {
    close(folder_);
}

bool StoreFolder::isTaken() const {
    std::error_code problem;
    const auto status = std::filesystem::symlink_status(store_, problem);
    if (status.type() == std::filesystem::file_type::none) fail("it cannot be opened: " + problem.message());
    return status.type() != std::filesystem::file_type::not_found;
}

bool StoreFolder::hasLog() const {
    std::error_code none;
    const auto size = std::filesystem::file_size(store_ + "-wal", none);
    return !none && size > 0;
}

void StoreFolder::sweep() const {
    for (const auto* const ending : leftovers) {
        std::error_code problem;
        std::filesystem::remove(store_ + ending, problem);
        if (problem) fail("what is left beside it cannot be removed: " + problem.message());
    }
}

void StoreFolder::putInPlace() const {
    std::error_code problem;
    std::filesystem::rename(beginning(), store_, problem);
    if (problem) fail("it cannot be put in its place: " + problem.message());
    if (fsync(folder_) != 0) fail("its folder cannot be written: " + messageOf(errno));
}

void StoreFolder::fail(const std::string& reason) const {
    throw StoreFailure{store_, reason};
}

} // namespace simulator
