#pragma once

#include "platform/ui/Geometry.h"
#include "tests/macos/gnustep/Display.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace macos_tests {

/// What assistive technology sees of the window.
struct Element {
    std::string role;
    std::string label;
    std::string value;
    /// In the scene's points.
    platform::ui::Rect rect;

    friend bool operator==(const Element&, const Element&) = default;
};

/// Something that a test does once something holds, which is named for the failure where it never does.
struct Step {
    std::string awaited;
    std::function<bool()> holds;
    std::function<void()> act;
};

Step atOnce(std::function<void()> act);

/// A person at the application: sees its window, points, presses keys, and waits for what comes of it. Made for the
/// body of a test by run().
class Desk {
public:
    /// Runs an application, to its end.
    using Application = std::function<int()>;

    /// Runs the whole application; once its window is on the screen runs `body`, inside the main loop, and then ends
    /// the application. Returns its exit status.
    static int run(const std::function<void(Desk&)>& body, const Application& application = driverManager);
    /// The same, and the application has to end by itself.
    static int runToItsEnd(const std::function<void(Desk&)>& body, const Application& application = driverManager);
    /// The application whose window it is.
    static int driverManager();

    // Where the application waits of its own accord, for a long time, and nothing comes, the test fails and the program
    // ends.

    /// Lets the application work until `holds` does. False if it still does not after a long time.
    [[nodiscard]] bool until(const std::function<bool()>& holds);
    /// The steps that follow while a button is held down or a menu is open, in order. The first comes once one is.
    void meanwhile(std::vector<Step> steps);
    bool meanwhileIsOver() const;
    Step onceMenuIsOpen(std::function<void()> act) const;
    /// Points at the item until the menu has taken notice.
    Step onceAtItem(const std::string& title, std::function<void()> act);

    /// In reading order.
    std::vector<Element> elements() const;
    /// What assistive technology is told of a point of the scene; nothing where only the window is.
    std::optional<Element> elementAt(platform::ui::Point point) const;
    /// Whether the texts and images are told to be in the window: the canvas is nothing.
    bool areInTheWindow() const;
    /// The values of the texts.
    std::vector<std::string> texts() const;
    bool shows(const std::string& text) const;
    bool has(const std::string& label) const;
    /// The label of what has keyboard focus; empty if no control has it.
    std::string focused() const;
    /// Whether the control of that label accepts focus that is offered now.
    bool acceptsFocus(const std::string& label) const;
    /// Whether the window leaves the order of its controls alone.
    bool keepsItsOrderOfKeys() const;
    /// Where the focus ring of the control of that label lies, in the points of its view.
    platform::ui::Rect focusRingOf(const std::string& label) const;
    /// What the control fills for its focus ring, black on white, where it lies in the window's content.
    Picture focusRingMaskOf(const std::string& label) const;
    /// Each item of its menus, as "Edit: Redo shift-command-z redo:"; a line is "-".
    std::vector<std::string> mainMenu() const;
    /// Whether the system would fill the menu that opens from the application menu's item Services.
    bool offersServices() const;
    /// What the open menu offers; nothing if none is open.
    std::vector<std::string> menuItems() const;
    /// The item of the open menu that would be chosen now; empty if there is none.
    std::string highlightedItem() const;
    std::string title() const;
    /// The size of the window's content, in points.
    platform::ui::Size contentSize() const;

    void pointAt(platform::ui::Point point);
    void releaseButton() { display_.releaseButton(); }
    /// Presses the control of that label, and takes the steps while the button is held down.
    void press(const std::string& label, std::vector<Step> steps);
    void click(const std::string& label);
    /// Presses, or clicks, where no control is. False if the application does not see to it.
    [[nodiscard]] bool pressBeside(platform::ui::Point point);
    [[nodiscard]] bool clickBeside(platform::ui::Point point);
    /// Draws the pointer from the menu of that label to the item, and releases it there.
    void choose(const std::string& label, const std::string& item);
    void tapKey(const std::string& key, const std::vector<std::string>& modifiers = {});
    void closeWindow();

    /// Paints what waits to be, and takes a picture of the scene's area; of more above it, if it is told.
    Picture picture(int above = 0);

private:
    /// Runs the body in front of the window, and tells what it throws: an application that is left by an exception
    /// could not be run again.
    static void runInFront(const std::function<void(Desk&)>& body);
    /// Whether the window is in front, where it is brought if need be, and painted.
    bool isReady();
    /// Waits until an event of that type has been handled.
    bool isHandled(unsigned long type);
    /// Points at the item of the open menu, and tells whether the menu has taken notice.
    bool isAtItem(const std::string& title);
    /// Where the control of that label is, in the scene's points.
    platform::ui::Point middleOf(const std::string& label) const;
    /// In the scene's points.
    platform::ui::Point middleOfItem(const std::string& title) const;
    /// On the screen.
    Display::Position originOfScene() const;

    Display display_;
};

} // namespace macos_tests
