#include "simulator/core/CopyTransition.h"

namespace simulator {

const CopyTransition* transitionOf(CopyState from, CopyEvent event) {
    for (const CopyTransition& row : copyTransitions) {
        if (row.from == from && row.event == event) return &row;
    }
    return nullptr;
}

} // namespace simulator
