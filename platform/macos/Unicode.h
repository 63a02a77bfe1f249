#pragma once

#include <string>
#include <string_view>

// Between the encoding of our texts and the one of the system's.

namespace platform {

/// Each byte that is no UTF-8 becomes a replacement character.
std::u16string utf16Of(std::string_view utf8);

/// Each half of a surrogate pair that stands alone becomes a replacement character.
std::string utf8Of(std::u16string_view utf16);

} // namespace platform
