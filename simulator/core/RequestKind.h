#pragma once

#include <optional>
#include <string_view>

namespace simulator {

enum class RequestKind { activation, deactivation, properties };

inline constexpr std::string_view nameOf(RequestKind kind) {
    switch (kind) {
    case RequestKind::activation:
        return "activation";
    case RequestKind::deactivation:
        return "deactivation";
    case RequestKind::properties:
        return "properties";
    }
    return {};
}

inline constexpr std::optional<RequestKind> requestKindNamed(std::string_view name) {
    for (const RequestKind kind : {RequestKind::activation, RequestKind::deactivation, RequestKind::properties}) {
        if (nameOf(kind) == name) return kind;
    }
    return std::nullopt;
}

} // namespace simulator
