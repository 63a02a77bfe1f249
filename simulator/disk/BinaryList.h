#pragma once

#include <string_view>

namespace simulator {

/// Whether a binary property list can be read without harm, and lies no deeper than that. In this format a value may
/// stand in many places: a few bytes may stand for more than any memory holds, or for more levels than any stack.
bool isModestBinaryList(std::string_view bytes, int deepest);

} // namespace simulator
