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

/// What came of it: what there is to say, which is often nothing, or why it was not done.
using Outcome = std::variant<std::string, Refusal>;
/// Words that were understood, to be done to a machine.
using Deed = std::function<Outcome(Machine&)>;

/// What someone says to the machine: a verb, and what follows it.
struct Saying {
    std::vector<Word> words;
    /// Of the file that the words name, if they name one.
    std::string contents;
};

inline constexpr std::string_view noLine = "-";

/// What a person does to the simulated Mac, what befalls it, and how it is set up. A line of a scenario, a call of the
/// command line and a press in System Settings are these words. A new verb is an entry of the table in Verbs.cpp.
struct Verb {
    /// What the words after it, other than options, are to whoever says it: a file, whose contents are said with them;
    /// or folders, which are absolute paths by the time that the machine hears of them.
    enum class Names { nothing, file, folders };

    /// Under which the help lists it.
    std::string_view head;
    std::string_view word;
    std::string_view usage;
    /// One line.
    std::string_view summary;
    /// More lines, each ended, before those of the list.
    std::string_view details;
    /// Takes what follows the verb. Throws NotUnderstood.
    Deed (*read)(Words& words);
    /// Its usage in a scenario; empty if that is the same, noLine if a scenario does not have it.
    std::string_view line{};
    Names names = Names::nothing;
    /// In a scenario, any other word that looks like an option is a text.
    std::string_view option{};
    /// What it may name, as lines for the help; null if the details say it all.
    std::string (*list)() = nullptr;
};

/// In the order of the help.
std::span<const Verb> verbs();
/// Its details, all of them.
std::string detailsOf(const Verb& verb);
/// The states that have this trait, or all, each as a line with its two wordings.
std::string listOfStates(bool CopyStateRow::*trait = nullptr);
/// Null if there is none.
const Verb* verbNamed(std::string_view word);
/// Whether words that can be understood name such a thing.
bool names(const std::vector<Word>& words, Verb::Names what);
/// Understands a verb and what follows it. Throws NotUnderstood.
Deed understood(const Saying& saying, WrittenOn where = WrittenOn::commandLine);

/// A word and what follows it, if anything does.
std::string usageOf(std::string_view word, std::string_view usage);
/// The same for a verb in a scenario.
std::string lineOf(const Verb& verb);

} // namespace simulator
