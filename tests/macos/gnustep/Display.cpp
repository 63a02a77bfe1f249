#include "tests/macos/gnustep/Display.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>

#include <memory>
#include <stdexcept>

namespace macos_tests {

namespace {

::Display* native(void* const display) {
    return static_cast<::Display*>(display);
}

struct DestroyImage {
    void operator()(XImage* const image) const { XDestroyImage(image); }
};

std::uint8_t channel(const unsigned long pixel, const unsigned shift) {
    return static_cast<std::uint8_t>(pixel >> shift & 0xFFU);
}

} // namespace

Display::Display() : display_{XOpenDisplay(nullptr)} {
    if (!display_) throw std::runtime_error{"there is no display"};
}

Display::~Display() {
    XCloseDisplay(native(display_));
}

void Display::movePointer(const int x, const int y) {
    // A motion to where the pointer is would be an event too, and many of them keep an application from the rest.
    if (pointer() == Position{x, y}) return;
    XTestFakeMotionEvent(native(display_), -1, x, y, CurrentTime);
    XSync(native(display_), False);
}

void Display::pressButton() {
    XTestFakeButtonEvent(native(display_), 1, True, CurrentTime);
    XSync(native(display_), False);
}

void Display::releaseButton() {
    XTestFakeButtonEvent(native(display_), 1, False, CurrentTime);
    XSync(native(display_), False);
}

void Display::tapKey(const std::string& key, const std::vector<std::string>& modifiers) {
    const auto set = [this](const std::string& name, const int down) {
        const KeyCode code = XKeysymToKeycode(native(display_), XStringToKeysym(name.c_str()));
        XTestFakeKeyEvent(native(display_), code, down, CurrentTime);
    };
    for (const std::string& modifier : modifiers)
        set(modifier, True);
    set(key, True);
    set(key, False);
    for (const std::string& modifier : modifiers)
        set(modifier, False);
    XSync(native(display_), False);
}

void Display::activate(const unsigned long window) {
    constexpr long person = 2;
    askWindowManager("_NET_ACTIVE_WINDOW", window, person);
}

void Display::closeWindow(const unsigned long window) {
    askWindowManager("_NET_CLOSE_WINDOW", window, 0);
}

void Display::askWindowManager(const char* const what, const unsigned long window, const long detail) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(native(display_), what, False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = detail;
    XSendEvent(native(display_), DefaultRootWindow(native(display_)), False,
               SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(native(display_), False);
}

bool Display::shows(const unsigned long window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(native(display_), window, &attributes) != 0 && attributes.map_state == IsViewable;
}

bool Display::isFocused(const unsigned long window) const {
    ::Window focused{};
    int revert = 0;
    XGetInputFocus(native(display_), &focused, &revert);
    return focused == window;
}

Display::Position Display::positionOf(const unsigned long window) const {
    Position position{};
    ::Window child{};
    XTranslateCoordinates(native(display_), window, DefaultRootWindow(native(display_)), 0, 0, &position.x, &position.y,
                          &child);
    return position;
}

Display::Position Display::pointer() const {
    Position position{};
    ::Window window{};
    int inWindow = 0;
    unsigned state = 0;
    XQueryPointer(native(display_), DefaultRootWindow(native(display_)), &window, &window, &position.x, &position.y,
                  &inWindow, &inWindow, &state);
    return position;
}

void Display::finish(void* const connection) {
    XSync(native(connection), False);
}

Picture Display::picture(const unsigned long window, const int x, const int y, const int width, const int height) {
    const std::unique_ptr<XImage, DestroyImage> image{XGetImage(native(display_), window, x, y,
                                                                static_cast<unsigned>(width),
                                                                static_cast<unsigned>(height), AllPlanes, ZPixmap)};
    if (!image) throw std::runtime_error{"the window is not on the screen"};
    Picture picture{width, height, {}};
    for (int row = 0; row < height; ++row) {
        for (int column = 0; column < width; ++column) {
            const unsigned long pixel = XGetPixel(image.get(), column, row);
            picture.pixels.push_back({channel(pixel, 16), channel(pixel, 8), channel(pixel, 0)});
        }
    }
    return picture;
}

} // namespace macos_tests
