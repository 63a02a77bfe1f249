#pragma once

#include <optional>
#include <string>

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

} // namespace simulator
