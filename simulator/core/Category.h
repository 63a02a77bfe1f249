#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace simulator {

/// What kind of extension it is.
enum class Category { camera, driver, endpointSecurity, network };

struct CategoryRow {
    Category category;
    std::string_view name;
};

/// In alphabetical order of the names, which is the order of the printed list.
inline constexpr std::array categories{
    CategoryRow{Category::camera, "com.apple.system_extension.cmio"},
    CategoryRow{Category::driver, "com.apple.system_extension.driver_extension"},
    CategoryRow{Category::endpointSecurity, "com.apple.system_extension.endpoint_security"},
    CategoryRow{Category::network, "com.apple.system_extension.network_extension"},
};

std::string_view nameOf(Category category);
std::optional<Category> categoryNamed(std::string_view name);

} // namespace simulator
