#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace simulator {

/// Why the machine would not do what it was told; nothing was changed.
struct Refusal {
    enum class Kind { nothingWaiting, unknownIdentifier, invalidArgument, limitExceeded, forbiddenByProfile };

    Kind kind = Kind::invalidArgument;
    /// One clear line.
    std::string message;

    friend bool operator==(const Refusal&, const Refusal&) = default;
};

/// Nothing: it was done.
using Verdict = std::optional<Refusal>;
inline constexpr std::nullopt_t done = std::nullopt;

inline Refusal invalid(std::string message) {
    return {Refusal::Kind::invalidArgument, std::move(message)};
}

inline Refusal tooMany(std::string message) {
    return {Refusal::Kind::limitExceeded, std::move(message)};
}

/// How much of anything the machine takes. Far above what an honest client needs.
namespace limits {
inline constexpr std::size_t token = 128;
inline constexpr std::size_t identifier = 255;
inline constexpr std::size_t version = 4096;
inline constexpr std::size_t path = 4096;
inline constexpr std::size_t domain = 255;
inline constexpr std::size_t description = 65536;
inline constexpr std::size_t profile = 1048576;
inline constexpr std::size_t requestsOfClient = 256;
inline constexpr std::size_t requests = 4096;
inline constexpr std::size_t copies = 20000;
inline constexpr std::size_t faults = 1000;
inline constexpr std::size_t folders = 64;
inline constexpr std::size_t applications = 1000;
/// Of the clock and of delays, in milliseconds: a thousand years.
inline constexpr std::int64_t time = std::int64_t{1000} * 366 * 24 * 3600 * 1000;
} // namespace limits

/// No longer than that many bytes, and without control characters.
inline constexpr bool isPlain(std::string_view text, std::size_t longest) {
    if (text.size() > longest) return false;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20 || byte == 0x7f) return false;
    }
    return true;
}

} // namespace simulator
