// The application, for what cannot be a test's own process. If PICTURE names a file, it writes a picture of the window,
// and of what lies under its title bar, there, a portable pixmap, and ends. An argument would be a document to open,
// for GNUstep.

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
    if (!file) return macos_tests::Desk::runToItsEnd([](const macos_tests::Desk&) {});
    return macos_tests::Desk::run([&](macos_tests::Desk& desk) {
        answer("com.kelvra.ip-camera.cmio", false);
        answer("com.kelvra.driverkit.usb-to-poe", true);
        if (!desk.until([&] { return desk.shows("Await approval"); })) throw std::runtime_error{"no answer was shown"};
        constexpr int titleBar = 28;
        write(desk.picture(titleBar), file);
    });
}
