#include "tests/support/FakeOutput.h"

#include "platform/Output.h"

namespace platform {

namespace {

std::vector<std::string>& lines() {
    static std::vector<std::string> printed;
    return printed;
}

} // namespace

void printLine(const std::string_view line) {
    lines().emplace_back(line);
}

namespace fake {

const std::vector<std::string>& printedLines() {
    return lines();
}

void resetOutput() {
    lines().clear();
}

} // namespace fake

} // namespace platform
