#pragma once

#include "simulator/player/Mac.h"
#include "simulator/player/Scenario.h"

#include <string>

namespace simulator::player {

/// Puts one word in the place of another, wherever that stands.
inline void replaceEach(std::string& text, const std::string& word, const std::string& by) {
    for (auto at = text.find(word); at != std::string::npos; at = text.find(word, at + by.size()))
        text.replace(at, word.size(), by);
}

/// What comes of a scenario on a Mac in this process: "as it says", or "LINE: what was there instead". In its text
/// CAMERA and DRIVER stand for two of the extensions of the sample application; the files that it names are those that
/// come with the simulator. Throws ScenarioError.
inline std::string played(std::string text, Mac& mac) {
    replaceEach(text, "CAMERA", "com.kelvra.ip-camera.cmio");
    replaceEach(text, "DRIVER", "com.kelvra.driverkit.usb-to-poe");
    const auto mismatch = play(readScenario(text, "a.scenario", SCENARIOS), mac);
    return mismatch ? std::to_string(mismatch->line) + ": " + mismatch->text : "as it says";
}

/// The same on a Mac of its own.
inline std::string played(const std::string& text) {
    return played(text, *newCoreMac());
}

} // namespace simulator::player
