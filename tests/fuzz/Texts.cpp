#include "model/DecimalInteger.h"
#include "platform/Text.h"
#include "simulator/core/Answer.h"
#include "simulator/core/Words.h"
#include "tests/fuzz/Bytes.h"
#include "views/HexColor.h"

#include <cmath>

// Colors, integers and times, as they are read from texts.

void tests::fuzz(Bytes bytes) {
    const std::string text = bytes.takeRest();
    const auto [red, green, blue, opacity] = views::hexColor(text);
    for (const double component : {red, green, blue, opacity})
        must(std::isfinite(component) && component >= 0, "a color has a component that is no number");
    const auto trimmed = platform::trimmedToAlphanumerics(text);
    must(platform::trimmedToAlphanumerics(trimmed) == trimmed, "what is trimmed can be trimmed again");

    if (const auto integer = model::decimalInteger(text)) {
        must(model::decimalInteger(std::to_string(*integer)) == integer, "an integer is another one when written");
        must(simulator::numberIn(text) == integer, "the simulator reads another integer");
    }
    if (const auto length = simulator::millisecondsOf(text)) {
        must(*length >= 0 && *length <= simulator::limits::time, "a time is out of bounds");
        must(simulator::millisecondsOf(simulator::inSeconds(*length)) == length, "a time is another one when written");
    }
}
