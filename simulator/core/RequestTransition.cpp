#include "simulator/core/RequestTransition.h"

namespace simulator {

const RequestTransition* transitionOf(Stage from, RequestEvent event) {
    for (const RequestTransition& row : requestTransitions) {
        if (row.from == from && row.event == event) return &row;
    }
    return nullptr;
}

std::string_view nameOf(Stage stage) {
    switch (stage) {
    case Stage::delayed:
        return "delayed";
    case Stage::checking:
        return "checking";
    case Stage::validating:
        return "validating";
    case Stage::replacement:
        return "replacement";
    case Stage::staging:
        return "staging";
    case Stage::user:
        return "user";
    case Stage::authorization:
        return "authorization";
    case Stage::removing:
        return "removing";
    case Stage::silent:
        return "silent";
    case Stage::ended:
        return "ended";
    }
    return {};
}

} // namespace simulator
