#pragma once

#include "simulator/core/Machine.h"
#include "simulator/core/Words.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace simulator {

/// What to print, which is often nothing, or why the machine refused.
using Outcome = std::variant<std::string, Refusal>;
/// What a verb and its arguments do to a machine.
using Deed = std::function<Outcome(Machine&)>;

/// A verb and its arguments.
struct Saying {
    std::vector<Word> words;
    /// Of the file that the words name, if any.
    std::string contents;
};

inline constexpr std::string_view noLine = "-";

/// What the help says of a verb.
struct Help {
    /// The heading under which it is listed.
    std::string_view head;
    std::string_view word;
    std::string_view usage;
    /// One line.
    std::string_view summary;
    /// More lines, each ended.
    std::string details;
};

/// A verb that acts on the simulated Mac. The command line, scenarios, and System Settings share them. A new verb is an
/// entry of the table in Verbs.cpp.
struct Verb : Help {
    /// What the arguments, other than options, name: a file, whose contents are passed along; or folders, which the
    /// caller makes absolute.
    enum class Names { nothing, file, folders };

    /// Reads the arguments. Throws NotUnderstood.
    Deed (*read)(Words& words);
    /// Its usage in a scenario; empty if that is the same, noLine if a scenario does not have it.
    std::string_view line{};
    /// In a scenario, any other word that looks like an option is a text.
    std::string_view option{};
    Names names = Names::nothing;
};

/// In the order of the help.
std::span<const Verb> verbs();
/// The states that have this trait, or all, each as a line with its two wordings.
std::string listOfStates(bool CopyStateRow::*trait = nullptr);
/// Null if there is none.
const Verb* verbNamed(std::string_view word);
/// Whether the arguments name such a thing.
bool names(const std::vector<Word>& words, Verb::Names what);
/// Reads a verb and its arguments. Throws NotUnderstood.
Deed understood(const Saying& saying, WrittenOn where = WrittenOn::commandLine);

/// A word and its usage, if it has one.
std::string usageOf(std::string_view word, std::string_view usage);
/// The same for a verb in a scenario.
std::string lineOf(const Verb& verb);

} // namespace simulator
