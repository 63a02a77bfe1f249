// The application, which writes a picture of its window, and of what lies under its title bar, to the file that PICTURE
// names, a portable pixmap, and ends. An argument would be a document to open, for GNUstep.

#include "tests/macos/gnustep/Desk.h"
#include "tests/macos/gnustep/ScriptedExtensions.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

void write(const macos_tests::Picture& picture, const char* const file) {
    std::ofstream out{file, std::ios::binary};
    out << "P6\n" << picture.width << ' ' << picture.height << "\n255\n";
    for (const macos_tests::Rgb& pixel : picture.pixels)
        out << static_cast<char>(pixel.red) << static_cast<char>(pixel.green) << static_cast<char>(pixel.blue);
    if (!out.flush()) throw std::runtime_error{"the picture cannot be written"};
}

void answer(const char* const identifier, const bool isEnabled) {
    auto& service = standin::ScriptedExtensions::shared();
    const auto copy = standin::makeProperties(identifier, "2.1", "2105", isEnabled, !isEnabled);
    service.found(service.latest(std::string{"properties "} + identifier), standin::makeArray({copy}));
}

} // namespace

int main() {
    const char* const file = std::getenv("PICTURE");
    if (!file) throw std::runtime_error{"PICTURE names no file"};
    return macos_tests::Desk::run([&](macos_tests::Desk& desk) {
        answer("com.kelvra.ip-camera.cmio", false);
        answer("com.kelvra.driverkit.usb-to-poe", true);
        if (!desk.until([&] { return desk.shows("Await approval"); })) throw std::runtime_error{"no answer was shown"};
        constexpr int titleBar = 28;
        write(desk.picture(titleBar), file);
    });
}
