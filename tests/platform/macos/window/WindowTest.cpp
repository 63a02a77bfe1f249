#include "tests/platform/macos/window/WindowTest.h"

#include <algorithm>
#include <cstdlib>

namespace macos_tests {

namespace {

testing::AssertionResult comes(Desk& desk, const std::function<bool()>& holds, const std::string& what) {
    if (desk.until(holds)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << what << " does not come; there is " << testing::PrintToString(desk.texts());
}

} // namespace

void WindowTest::run(const Body& body) {
    Desk::run(body);
}

void WindowTest::runToItsEnd(const Body& body) {
    std::exit(Desk::runToItsEnd(body));
}

long WindowTest::submitted(const std::string& submission) const {
    const auto& all = service_.submissions();
    return std::count(all.begin(), all.end(), submission);
}

testing::AssertionResult WindowTest::isSubmitted(Desk& desk, const std::string& submission, const long times) const {
    return comes(
        desk, [&] { return submitted(submission) == times; }, submission);
}

testing::AssertionResult WindowTest::comesToShow(Desk& desk, const std::string& text) {
    return comes(
        desk, [&] { return desk.shows(text); }, text);
}

testing::AssertionResult WindowTest::comesToHave(Desk& desk, const std::string& label) {
    return comes(
        desk, [&] { return desk.has(label); }, label);
}

void WindowTest::found(const Copy& copy) const {
    const auto properties = standin::makeProperties(copy.identifier.c_str(), "2.1", copy.version.c_str(),
                                                    copy.isEnabled, copy.isAwaitingUserApproval, copy.isUninstalling);
    service_.found(service_.latest("properties " + copy.identifier), standin::makeArray({properties}));
}

} // namespace macos_tests
