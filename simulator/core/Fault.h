#pragma once

#include "simulator/core/Failure.h"
#include "simulator/core/RequestKind.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace simulator {

/// Something that goes wrong with one request, ordered beforehand.
struct Fault {
    enum class Kind {
        error,
        silent,
        delay,
        hollow,   ///< finishes, and nothing runs
        noprompt, ///< waits for the user without saying so
        crash,    ///< the service dies when it has begun
    };

    Kind kind = Kind::error;
    /// The kind of request that it waits for; nothing: any.
    std::optional<RequestKind> request;
    /// Of an error.
    Failure failure;
    /// Of a delay.
    std::int64_t milliseconds = 0;

    friend bool operator==(const Fault&, const Fault&) = default;
};

struct FaultRow {
    Fault::Kind kind;
    std::string_view name;
    /// Which requests it can befall.
    bool activation;
    bool deactivation;
    bool properties;
};

inline constexpr std::array faultKinds{
    FaultRow{Fault::Kind::error, "error", true, true, true},
    FaultRow{Fault::Kind::silent, "silent", true, true, true},
    FaultRow{Fault::Kind::delay, "delay", true, true, true},
    FaultRow{Fault::Kind::hollow, "hollow", true, true, false},
    FaultRow{Fault::Kind::noprompt, "noprompt", true, false, false},
    FaultRow{Fault::Kind::crash, "crash", true, true, true},
};

std::string_view nameOf(Fault::Kind kind);
std::optional<Fault::Kind> faultKindNamed(std::string_view name);
/// Whether the fault, as it was ordered, befalls such a request.
bool befalls(const Fault& fault, RequestKind request);
/// Whether there is any kind of request that it can befall.
bool isPossible(const Fault& fault);

} // namespace simulator
