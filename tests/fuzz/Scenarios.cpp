#include "simulator/player/Mac.h"
#include "simulator/player/Scenario.h"
#include "tests/fuzz/Bytes.h"

// Scenarios: as they are read, and then as they are played.

using namespace simulator::player;

void tests::fuzz(Bytes bytes) {
    const std::string text = bytes.takeRest();
    try {
        const Scenario scenario = readScenario(text, "name", SCENARIOS);
        const auto mismatch = play(scenario, *newCoreMac());
        must(!mismatch || mismatch->line <= scenario.back().line, "a line is wrong that is not there");
    } catch (const ScenarioError& error) {
        const std::string_view what = error.what();
        must(what.starts_with("name:") && what.find('\n') == std::string_view::npos, "a complaint is not one line");
    }
}
