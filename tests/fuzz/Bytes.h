#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace tests {

/// What the fuzzer makes up, read as decisions. Once it is used up, each decision is the first and each text empty.
class Bytes {
public:
    explicit Bytes(std::string_view rest) : rest_{rest} {}

    bool isAtEnd() const { return rest_.empty(); }
    /// One of so many, from 0.
    std::size_t choice(std::size_t count);
    /// Up to the next of these, which is left out.
    std::string text(char end = '\n');
    std::string takeRest() { return std::string{std::exchange(rest_, {})}; }

private:
    std::string_view rest_;
};

/// Each fuzz target defines it.
void fuzz(Bytes bytes);
/// Ends the program, and thereby reports these bytes, unless it holds.
void must(bool holds, const std::string& what);

} // namespace tests
