#include "platform/macos/Unicode.h"

#include <array>
#include <cstddef>

namespace platform {

namespace {

constexpr Scalar replacement{0xFFFD, 1};

bool isSurrogate(const char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDFFF;
}

unsigned byteAt(const std::string_view text, const std::size_t at) {
    return static_cast<unsigned char>(text[at]);
}

/// How many bytes a sequence takes that begins with `lead`; 0 if none does.
std::size_t sequenceLength(const unsigned lead) {
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead < 0xE0) return 2;
    if (lead >= 0xE0 && lead < 0xF0) return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

void append(std::u16string& text, const char32_t scalar) {
    if (scalar < 0x10000) {
        text += static_cast<char16_t>(scalar);
    } else {
        text += static_cast<char16_t>(0xD800 + ((scalar - 0x10000) >> 10U));
        text += static_cast<char16_t>(0xDC00 + ((scalar - 0x10000) & 0x3FFU));
    }
}

void append(std::string& text, const char32_t scalar) {
    const auto tail = [&](const unsigned shift) { text += static_cast<char>(0x80U | (scalar >> shift & 0x3FU)); };
    if (scalar < 0x80) {
        text += static_cast<char>(scalar);
    } else if (scalar < 0x800) {
        text += static_cast<char>(0xC0U | scalar >> 6U);
        tail(0);
    } else if (scalar < 0x10000) {
        text += static_cast<char>(0xE0U | scalar >> 12U);
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | scalar >> 18U);
        tail(12);
        tail(6);
        tail(0);
    }
}

template <typename To, typename From>
To converted(From text) {
    To result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Scalar scalar = firstScalar(text);
        append(result, scalar.value);
        text.remove_prefix(scalar.length);
    }
    return result;
}

} // namespace

Scalar firstScalar(const std::string_view utf8) {
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const unsigned lead = byteAt(utf8, 0);
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || length > utf8.size()) return replacement;
    char32_t value = length == 1 ? lead : lead & (0x7FU >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((byteAt(utf8, at) & 0xC0U) != 0x80) return replacement;
        value = value << 6U | (byteAt(utf8, at) & 0x3FU);
    }
    if (value < least.at(length) || value > 0x10FFFF || isSurrogate(value)) return replacement;
    return {value, length};
}

Scalar firstScalar(const std::u16string_view utf16) {
    const char32_t unit = utf16.front();
    if (!isSurrogate(unit)) return {unit, 1};
    if (unit >= 0xDC00 || utf16.size() < 2 || utf16[1] < 0xDC00 || utf16[1] > 0xDFFF) return replacement;
    return {0x10000 + ((unit - 0xD800) << 10U) + (utf16[1] - 0xDC00U), 2};
}

std::u16string utf16Of(const std::string_view utf8) {
    return converted<std::u16string>(utf8);
}

std::string utf8Of(const std::u16string_view utf16) {
    return converted<std::string>(utf16);
}

} // namespace platform
