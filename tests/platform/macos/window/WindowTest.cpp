#include "tests/platform/macos/window/WindowTest.h"

#include "platform/Application.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"

#include <algorithm>
#include <cstdlib>

namespace macos_tests {

namespace ui = platform::ui;

namespace {

testing::AssertionResult comes(Desk& desk, const std::function<bool()>& holds, const std::string& what) {
    if (desk.until(holds)) return testing::AssertionSuccess();
    return testing::AssertionFailure() << what << " does not come; there is " << testing::PrintToString(desk.texts());
}

class Delegate : public platform::NSApplicationDelegate {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }
};

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

testing::AssertionResult WindowTest::isDone(Desk& desk) {
    return comes(
        desk, [&] { return desk.meanwhileIsOver(); }, "the end of a press");
}

void WindowTest::found(const Copy& copy) const {
    const auto properties =
        standin::makeProperties(copy.identifier.c_str(), "2.1", "2105", copy.isEnabled, copy.isAwaitingUserApproval);
    service_.found(service_.latest("properties " + copy.identifier), standin::makeArray({properties}));
}

void ScreenTest::run(const Screen& screen, const std::function<void(Desk&)>& body) {
    const ui::WindowGroup group{[&] {
        return ui::observing(situation_, [this, screen] { return screen(situation_->number.get()); })
            .frame(ui::FixedFrame{.width = 450, .height = 230});
    }};
    Desk::run(body, [&] {
        Delegate delegate;
        return platform::runApplication(0, nullptr, "Driver Manager", delegate, group);
    });
}

ui::View ScreenTest::button(const std::string& title) {
    return ui::Button{title.c_str(), [this, title] { ++presses_[title]; }};
}

int ScreenTest::pressed(const std::string& title) const {
    const auto found = presses_.find(title);
    return found == presses_.end() ? 0 : found->second;
}

testing::AssertionResult comesToFocus(Desk& desk, const std::string& label) {
    return comes(
        desk, [&] { return desk.focused() == label; }, "focus on \"" + label + '"');
}

ui::View rows(const std::vector<ui::View>& rows) {
    return ui::VStack{ui::HorizontalAlignment::center,
                      ui::ForEach{rows.size(), [&](const std::size_t index) { return rows[index]; }}};
}

} // namespace macos_tests
