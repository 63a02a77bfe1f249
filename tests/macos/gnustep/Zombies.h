#pragma once

namespace macos_tests {

/// Starts the program anew with zombies on, unless they are: a message to an object of Objective-C that has gone ends
/// the program.
void haveZombies(char** argv);

} // namespace macos_tests
