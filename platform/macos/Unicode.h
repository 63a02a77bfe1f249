#pragma once

#include <cstddef>
#include <string>
#include <string_view>

// Between the encoding of our texts and the one of the system's.

namespace platform {

/// A scalar at the start of a text, and how many units of the text it takes.
struct Scalar {
    char32_t value;
    std::size_t length;
};

/// A byte that is no UTF-8, or a half of a surrogate pair that stands alone, is a replacement character. The text is
/// not empty.
Scalar firstScalar(std::string_view utf8);
Scalar firstScalar(std::u16string_view utf16);

/// Each byte that is no UTF-8 becomes a replacement character.
std::u16string utf16Of(std::string_view utf8);

/// Each half of a surrogate pair that stands alone becomes a replacement character.
std::string utf8Of(std::u16string_view utf16);

} // namespace platform
