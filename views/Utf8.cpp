#include "views/Utf8.h"

#include <algorithm>
#include <array>

namespace views {

namespace {

constexpr Scalar invalid{0xFFFD, 1};

unsigned byteAt(const std::string_view text, const std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

bool isContinuation(const unsigned byte) {
    return (byte & 0xC0) == 0x80;
}

/// How many bytes a sequence that begins with `lead` takes; 0 if none does.
std::size_t sequenceLength(const unsigned lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

bool isScalar(const char32_t value, const std::size_t length) {
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    return value >= least.at(length) && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
}

} // namespace

Scalar firstScalar(const std::string_view text) {
    const unsigned lead = byteAt(text, 0);
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || length > text.size()) return invalid;
    char32_t value = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if (!isContinuation(byteAt(text, at))) return invalid;
        value = value << 6 | (byteAt(text, at) & 0x3Fu);
    }
    return isScalar(value, length) ? Scalar{value, length} : invalid;
}

Scalar lastScalar(const std::string_view text) {
    for (std::size_t length = 1; length <= std::min<std::size_t>(4, text.size()); ++length) {
        const Scalar scalar = firstScalar(text.substr(text.size() - length));
        if (scalar.length == length && (length > 1 || scalar.value != invalid.value)) return scalar;
    }
    return invalid;
}

} // namespace views
