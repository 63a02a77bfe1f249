#include "simulator/scenario/FileContents.h"

#include <fstream>
#include <sstream>

namespace simulator::scenario {

std::optional<std::string> contentsOfFile(const std::string& path) {
    std::ifstream file{path, std::ios::binary};
    if (!file) return std::nullopt;
    if (file.peek() == std::ifstream::traits_type::eof())
        return file.bad() ? std::nullopt : std::optional{std::string{}};
    std::ostringstream contents;
    contents << file.rdbuf();
    return file.bad() || contents.bad() ? std::nullopt : std::optional{contents.str()};
}

} // namespace simulator::scenario
