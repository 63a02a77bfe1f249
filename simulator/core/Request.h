#pragma once

#include "simulator/core/Fault.h"
#include "simulator/core/RequestKind.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Where a request stands.
enum class Stage {
    delayed,       ///< a fault holds it back
    checking,      ///< whether it may be asked at all
    validating,    ///< the extension's files
    replacement,   ///< asked whether the new copy may take the place of the old one
    staging,       ///< the new copy
    user,          ///< waits for the user's approval
    authorization, ///< an administrator's question is open
    removing,      ///< the copies are being taken away
    silent,        ///< will never be answered
    ended,
};

/// As it is listed.
std::string_view nameOf(Stage stage);

/// One question of an application. It is not kept over a stop of the service.
struct Request {
    std::int64_t number = 0;
    /// Empty once the client is gone: what was begun goes on, and no one hears of it.
    std::string client;
    std::string token;
    /// The bundle of the client; empty if it runs from none.
    std::string application;
    RequestKind kind = RequestKind::properties;
    std::string identifier;
    Stage stage = Stage::checking;
    std::int64_t since = 0;
    /// When its next step is due, and its turn among those that are due at the same time.
    std::int64_t due = 0;
    std::int64_t turn = 0;
    /// The copy that it activates; 0 for none.
    std::int64_t copy = 0;
    std::int64_t result = 0;
    /// What it fails with as soon as it is looked at.
    std::optional<Failure> doomed;
    /// When it was made, the extension was not its program's to ask for. It fails, and is in no one's way until then.
    bool isForeign = false;
    std::optional<Fault> fault;
};

} // namespace simulator
