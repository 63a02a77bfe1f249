#include "tests/support/FakeWindow.h"

#include "platform/Application.h"
#include "platform/ui/Interaction.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace platform::fake {

namespace {

std::function<void(RunningApplication&)>& applicationBody() {
    static std::function<void(RunningApplication&)> body;
    return body;
}

} // namespace

FakeWindow::FakeWindow(const ui::WindowGroup& group, const ui::EdgeInsets safeArea)
    : host_{group, metrics_, safeArea, [this](std::function<void()> work) { endOfTurn_.push_back(std::move(work)); },
            [this](const ui::Scene&) { ++rebuilds_; }} {
}

std::vector<std::string> FakeWindow::texts() const {
    std::vector<std::string> texts;
    for (const ui::Readable& readable : ui::readingOrder(scene()))
        if (const auto* text = std::get_if<const ui::TextRun*>(&readable)) texts.push_back((*text)->text);
    return texts;
}

std::vector<std::string> FakeWindow::controls() const {
    std::vector<std::string> names;
    for (const ui::Control* control : ui::controlsOf(scene()))
        names.push_back(control->accessibleName);
    return names;
}

const ui::Control& FakeWindow::control(const std::string& accessibleName) const {
    for (const ui::Control* control : ui::controlsOf(scene()))
        if (control->accessibleName == accessibleName) return *control;
    throw std::out_of_range{"no control named " + accessibleName};
}

void FakeWindow::press(const std::string& accessibleName) {
    const ui::PushButton button = std::get<ui::PushButton>(control(accessibleName).kind);
    button.action.run();
}

void FakeWindow::choose(const std::string& accessibleName, const std::string& item) {
    const auto& items = std::get<ui::PullDownMenu>(control(accessibleName).kind).items;
    const auto chosen =
        std::find_if(items.begin(), items.end(), [&](const ui::MenuItem& menuItem) { return menuItem.title == item; });
    if (chosen == items.end()) throw std::out_of_range{"no item " + item};
    const ui::Action action = chosen->action;
    action.run();
}

void FakeWindow::endTurn() {
    for (const auto& work : std::exchange(endOfTurn_, {}))
        work();
}

void whenApplicationRuns(std::function<void(RunningApplication&)> body) {
    applicationBody() = std::move(body);
}

} // namespace platform::fake

namespace platform {

int runApplication(int, char**, const char* title, NSApplicationDelegate& delegate, const ui::WindowGroup& scene) {
    fake::FakeWindow window{scene};
    fake::RunningApplication application{title, delegate.applicationShouldTerminateAfterLastWindowClosed(), window};
    if (const auto body = std::exchange(fake::applicationBody(), {})) body(application);
    return 0;
}

} // namespace platform
