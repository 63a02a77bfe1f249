#include "simulator/store/FileHeader.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <string_view>

namespace simulator {

namespace {

using Bytes = std::array<char, 100>;

constexpr std::string_view magic{"SQLite format 3\0", 16};
constexpr std::size_t versionOffset = 60;
constexpr std::size_t applicationIdOffset = 68;

std::int64_t numberAt(const Bytes& bytes, std::size_t offset) {
    std::uint32_t number = 0;
    for (std::size_t i = offset; i < offset + 4; ++i)
        number = number << 8U | static_cast<unsigned char>(bytes[i]);
    return static_cast<std::int32_t>(number);
}

} // namespace

std::optional<FileHeader> readFileHeader(const std::string& file) {
    Bytes bytes{};
    std::ifstream stream{file, std::ios::binary};
    if (!stream.read(bytes.data(), bytes.size())) return std::nullopt;
    if (std::string_view{bytes.data(), magic.size()} != magic) return std::nullopt;
    return FileHeader{numberAt(bytes, applicationIdOffset), numberAt(bytes, versionOffset)};
}

} // namespace simulator
