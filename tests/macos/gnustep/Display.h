#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace macos_tests {

/// The color of a pixel, with 8 bits for each component.
struct Rgb {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    friend bool operator==(const Rgb&, const Rgb&) = default;
};

/// What a part of the screen shows, row by row.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Rgb> pixels;

    /// Counted from the top left; throws where there is no such pixel.
    Rgb at(int x, int y) const { return pixels.at(static_cast<std::size_t>(std::ptrdiff_t{y} * width + x)); }
};

/// The X display, with a hand on its pointer and its keys. Positions are those of the screen.
class Display {
public:
    struct Position {
        int x = 0;
        int y = 0;
        friend bool operator==(const Position&, const Position&) = default;
    };

    /// Opens the display that the environment names; throws if there is none.
    Display();
    Display(const Display&) = delete;
    Display& operator=(const Display&) = delete;
    ~Display();

    /// Each returns once the display has taken the event; the application hears of it later.
    void movePointer(int x, int y);
    void pressButton();
    void releaseButton();
    /// Taps a key, while the modifiers are held down, all by their X names.
    void tapKey(const std::string& key, const std::vector<std::string>& modifiers = {});
    // Asked of the window manager.

    void activate(unsigned long window);
    void closeWindow(unsigned long window);

    /// Whether the window is on the screen.
    bool shows(unsigned long window);
    /// Whether it gets the keys.
    bool isFocused(unsigned long window) const;
    /// Where the top left of the window's content is.
    Position positionOf(unsigned long window) const;
    /// Waits until the display has done all that was asked of it by way of another connection, an X Display.
    static void finish(void* connection);
    /// What is seen in that part of the window.
    Picture picture(unsigned long window, int x, int y, int width, int height);

private:
    Position pointer() const;
    void askWindowManager(const char* what, unsigned long window, long detail);

    void* display_;
};

} // namespace macos_tests
