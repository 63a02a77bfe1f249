#include "tests/simulator/sample/Rows.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace simulator {

namespace {

constexpr std::array<std::string_view, 12> copyEvents{"accepted", "dropped",     "approved",     "unapproved",
                                                      "allowed",  "denied",      "switched off", "switched on",
                                                      "replaced", "deactivated", "stopped",      "restarted"};

constexpr std::array<std::string_view, 24> requestEvents{
    "delay passed", "failed",         "already active", "already waiting",
    "hollow",       "is new",         "needs question", "needs no question",
    "replace",      "cancel",         "needs approval", "needs hidden prompt",
    "activated",    "denied",         "denied unheard", "needs administrator",
    "may remove",   "may not remove", "removed",        "listed",
    "goes silent",  "superseded",     "withdrawn",      "client left"};

constexpr std::array<std::string_view, 10> replies{
    "",          "asked for replacement", "needs approval",  "finished 0", "finished 0 or 1", "failed", "failed 11",
    "failed 12", "failed 13 or 11",       "found properties"};

template <typename Names, typename Value>
std::string nameIn(const Names& names, Value value) {
    return std::string{names.at(static_cast<std::size_t>(value))};
}

} // namespace

std::string textOf(const CopyTransition& row) {
    const std::string to = row.to ? std::string{describe(*row.to).text} : "gone";
    return std::string{describe(row.from).text} + ", " + nameIn(copyEvents, row.event) + " -> " + to;
}

std::string textOf(const RequestTransition& row) {
    const std::string reply = nameIn(replies, row.reply);
    const std::string step =
        std::string{nameOf(row.from)} + ", " + nameIn(requestEvents, row.event) + " -> " + std::string{nameOf(row.to)};
    return reply.empty() ? step : step + ": " + reply;
}

} // namespace simulator
