#include "simulator/core/Category.h"

namespace simulator {

std::string_view nameOf(Category category) {
    for (const CategoryRow& row : categories) {
        if (row.category == category) return row.name;
    }
    return {};
}

std::optional<Category> categoryNamed(std::string_view name) {
    for (const CategoryRow& row : categories) {
        if (row.name == name) return row.category;
    }
    return std::nullopt;
}

} // namespace simulator
