#include "tests/macos/gnustep/Desk.h"

int main() {
    return macos_tests::Desk::runToItsEnd([](const macos_tests::Desk&) {});
}
