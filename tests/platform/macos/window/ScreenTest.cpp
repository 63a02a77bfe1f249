#include "tests/platform/macos/window/ScreenTest.h"

#include "platform/Application.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"

namespace macos_tests {

namespace ui = platform::ui;

namespace {

class Delegate : public platform::NSApplicationDelegate {
public:
    bool applicationShouldTerminateAfterLastWindowClosed() override { return true; }
};

} // namespace

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

ui::View rows(const std::vector<ui::View>& rows) {
    return ui::VStack{ui::HorizontalAlignment::center,
                      ui::ForEach{rows.size(), [&](const std::size_t index) { return rows[index]; }}};
}

} // namespace macos_tests
