#pragma once

#include <cstddef>
#include <string_view>

// Text functions of the system. Texts are UTF-8; each invalid byte counts as a replacement character.

namespace platform {

/// `text` from its first to its last alphanumeric character; empty without one. Alphanumeric characters are the
/// letters, marks, and numbers of all scripts.
std::string_view trimmedToAlphanumerics(std::string_view text);

/// The number of user-perceived characters, not of bytes or code points.
std::size_t characterCount(std::string_view text);

} // namespace platform
