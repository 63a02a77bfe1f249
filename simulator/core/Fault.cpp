#include "simulator/core/Fault.h"

#include <cstddef>

namespace simulator {

namespace {

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

} // namespace simulator
