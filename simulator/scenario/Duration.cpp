#include "simulator/scenario/Duration.h"

#include "simulator/core/Limits.h"

#include <array>
#include <cmath>

namespace simulator::scenario {

namespace {

struct Unit {
    std::string_view name;
    double milliseconds;
};

constexpr std::array units{
    Unit{"", 1000}, Unit{"ms", 1}, Unit{"s", 1000}, Unit{"m", 60e3}, Unit{"h", 3600e3}, Unit{"d", 24 * 3600e3},
};

constexpr std::string_view digits = "0123456789";

/// Takes the digits that the text begins with.
std::string_view takeDigits(std::string_view& text) {
    const auto taken = text.substr(0, text.find_first_not_of(digits));
    text.remove_prefix(taken.size());
    return taken;
}

double valueOf(std::string_view whole, std::string_view fraction) {
    double value = 0;
    for (const char digit : whole)
        value = value * 10 + (digit - '0');
    double weight = 1;
    for (const char digit : fraction)
        value += (digit - '0') * (weight /= 10);
    return value;
}

} // namespace

std::optional<std::int64_t> millisecondsOf(std::string_view text) {
    const auto whole = takeDigits(text);
    if (whole.empty()) return std::nullopt;
    std::string_view fraction;
    if (!text.empty() && text.front() == '.') {
        text.remove_prefix(1);
        fraction = takeDigits(text);
        if (fraction.empty()) return std::nullopt;
    }
    for (const Unit& unit : units) {
        if (unit.name != text) continue;
        const double length = valueOf(whole, fraction) * unit.milliseconds;
        if (!(length <= static_cast<double>(limits::time))) return std::nullopt;
        return static_cast<std::int64_t>(std::llround(length));
    }
    return std::nullopt;
}

} // namespace simulator::scenario
