#pragma once

#include <cstdio>
#include <cstdlib>

namespace simulator {

/// Stops the program where its own rules are broken: rather no service than a wrong answer.
inline void require(bool condition, const char* rule) {
    if (condition) return;
    std::fprintf(stderr, "internal error: %s\n", rule);
    std::abort();
}

} // namespace simulator
