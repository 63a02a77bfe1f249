#pragma once

#include <cstddef>
#include <string_view>

namespace views {

/// A scalar of a UTF-8 text and the bytes that it takes. Bytes that are no UTF-8 read as a replacement character each.
struct Scalar {
    char32_t value;
    std::size_t length;
};

/// `text` is not empty.
Scalar firstScalar(std::string_view text);
/// `text` is not empty.
Scalar lastScalar(std::string_view text);

} // namespace views
