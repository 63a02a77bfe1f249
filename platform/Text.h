#pragma once

#include <cstddef>
#include <string_view>

// What the system knows about text. Texts are UTF-8; each byte that is no UTF-8 counts as a replacement character.

namespace platform {

/// `text` without what stands before its first alphanumeric and after its last; empty if it has none. Alphanumerics
/// are the letters, marks and numbers of any script.
std::string_view trimmedToAlphanumerics(std::string_view text);

/// User-perceived characters, not bytes and not code points.
std::size_t characterCount(std::string_view text);

} // namespace platform
