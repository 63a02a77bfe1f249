#include "views/HexColor.h"

#include "platform/Text.h"

#include <charconv>
#include <cstdint>

namespace views {

namespace {

/// Components on the 0 to 255 scale. The topmost one is not masked.
struct Components {
    std::uint64_t opacity;
    std::uint64_t red;
    std::uint64_t green;
    std::uint64_t blue;
};

/// The hexadecimal number at the start of `text`; 0 without one.
std::uint64_t scanHexadecimal(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X")) text.remove_prefix(2);
    std::uint64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return value;
}

Components componentsOf(const std::uint64_t value, const std::size_t characters) {
    switch (characters) {
    case 8:
        return {value >> 24, value >> 16 & 255, value >> 8 & 255, value & 255};
    case 6:
        return {255, value >> 16, value >> 8 & 255, value & 255};
    case 3:
        return {255, (value >> 8) * 17, (value >> 4 & 15) * 17, (value & 15) * 17};
    default:
        return {1, 1, 1, 0};
    }
}

double unit(const std::uint64_t component) {
    return static_cast<double>(component) / 255.0;
}

} // namespace

platform::ui::Color hexColor(const std::string_view text) {
    const std::string_view digits = platform::trimmedToAlphanumerics(text);
    const Components components = componentsOf(scanHexadecimal(digits), platform::characterCount(digits));
    return {unit(components.red), unit(components.green), unit(components.blue), unit(components.opacity)};
}

} // namespace views
