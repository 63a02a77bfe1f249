#include "tests/support/FakeLog.h"

#include "platform/Log.h"

namespace platform {

namespace {

std::vector<std::string>& lines() {
    static std::vector<std::string> logged;
    return logged;
}

} // namespace

void writeLogLine(const std::string& line) {
    lines().push_back(line);
}

namespace fake {

const std::vector<std::string>& loggedLines() {
    return lines();
}

void resetLog() {
    lines().clear();
}

} // namespace fake

} // namespace platform
