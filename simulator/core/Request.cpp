#include "simulator/core/Request.h"

#include <cstddef>

namespace simulator {

namespace {

constexpr std::array<std::string_view, 10> stageNames{"delayed", "checking", "validating",    "replacement",
                                                      "staging", "user",     "authorization", "removing",
                                                      "silent",  "ended"};

const FaultRow& rowOf(Fault::Kind kind) {
    return faultKinds[static_cast<std::size_t>(kind)];
}

bool canBefall(Fault::Kind kind, RequestKind request) {
    switch (request) {
    case RequestKind::activation:
        return rowOf(kind).activation;
    case RequestKind::deactivation:
        return rowOf(kind).deactivation;
    case RequestKind::properties:
        return rowOf(kind).properties;
    }
    return false;
}

} // namespace

std::string_view nameOf(Fault::Kind kind) {
    return rowOf(kind).name;
}

std::optional<Fault::Kind> faultKindNamed(std::string_view name) {
    for (const FaultRow& row : faultKinds) {
        if (row.name == name) return row.kind;
    }
    return std::nullopt;
}

bool befalls(const Fault& fault, RequestKind request) {
    return (!fault.request || *fault.request == request) && canBefall(fault.kind, request);
}

bool isPossible(const Fault& fault) {
    return !fault.request || canBefall(fault.kind, *fault.request);
}

bool worksByItself(Stage stage) {
    return stage == Stage::delayed || stage == Stage::checking || stage == Stage::validating ||
           stage == Stage::staging || stage == Stage::removing;
}

std::string_view nameOf(Stage stage) {
    return stageNames[static_cast<std::size_t>(stage)];
}

} // namespace simulator
