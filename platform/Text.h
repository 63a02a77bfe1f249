#pragma once

#include <cstddef>
#include <string_view>

// What the system knows about text. Texts are UTF-8; each byte that is no UTF-8 counts as a replacement character.

namespace platform {

/// Letters, marks and numbers of any script.
bool isAlphanumeric(char32_t scalar);

/// User-perceived characters, not bytes and not code points.
std::size_t characterCount(std::string_view text);

} // namespace platform
