#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator::scenario {

struct Word {
    std::string text;
    bool isQuoted = false;
};

/// A line, word by word.
struct Words {
    std::vector<Word> words;
    /// The line without its comment and the blanks around it.
    std::string text;
};

/// Words are divided by blanks; a comma after a word is a word of its own. What stands in double quotes is one word,
/// in which \" is a quote and \\ a backslash. A # that begins a word begins a comment. Nothing: a quote is not closed.
std::optional<Words> wordsOf(std::string_view line);

} // namespace simulator::scenario
