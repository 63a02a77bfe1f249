#pragma once

#include "simulator/core/State.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace simulator {

using Value = std::variant<std::int64_t, std::string>;
using Row = std::vector<Value>;

/// A table of the store. The first columns are its key.
struct Table {
    std::string_view name;
    std::size_t keys;
    std::string_view columns;
};

// clang-format off
inline constexpr std::array tables{
    Table{"copy",        1, "number, team, identifier, name, category, owner, short_version, version, application, state, lingered"},
    Table{"approval",    2, "team, identifier"},
    Table{"fault",       1, "number, kind, request, domain, code, description, milliseconds"},
    Table{"extension",   1, "identifier, team, name, category, owner"},
    Table{"application", 1, "path"},
    Table{"folder",      1, "position, path"},
    Table{"switch",      1, "name, value"},
    Table{"machine",     1, "name, value"},
};
// clang-format on

/// The rows of each table, by their keys.
using StateRows = std::array<std::map<Row, Row>, tables.size()>;

struct Changes {
    std::vector<Row> gone;
    /// New ones, and those that take the place of one with the same key.
    std::vector<Row> put;
};

/// A table other than that of the copies.
struct Part {
    std::size_t table;
    bool (*isSame)(const State& one, const State& other);
    /// before: null for an empty table.
    Changes (*changes)(const State* before, const State& now);
    /// Makes the table of the one that of the other.
    void (*copy)(const State& from, State& to);
};

inline constexpr std::size_t copyTable = 0;
Row rowOf(const Copy& copy);
/// All the others. Of the management profile they keep its source alone.
const std::array<Part, tables.size() - 1>& parts();

/// Nothing if a row is none that is made here. The profile holds its source alone.
std::optional<State> stateOf(const StateRows& rows);

} // namespace simulator
