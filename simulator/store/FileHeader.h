#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace simulator {

/// What the first bytes of a file of SQLite's say of its origin.
struct FileHeader {
    std::int64_t applicationId = 0;
    std::int64_t version = 0;
};

/// Read without SQLite, which mends what it opens. Nothing if the file cannot be read or is none of SQLite's.
std::optional<FileHeader> readFileHeader(const std::string& file);

} // namespace simulator
