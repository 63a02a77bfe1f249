#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator {

/// Words that cannot be understood; what() is one line that says why.
class NotUnderstood : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Word {
    std::string text;
    /// It is text only, neither an option nor a keyword.
    bool isQuoted = false;
};

using WordList = std::vector<std::string>;

/// Where the words were written. On a command line, options may be anywhere, and the number of arguments is checked
/// first. A line of a scenario is read from left to right, and each complaint about it gives the usage.
enum class WrittenOn { commandLine, scenario };

/// The arguments of a verb that are still to be read. Throws NotUnderstood. First take the options, then call expect(),
/// then take the arguments in order, then call end().
///
///     words.expect(1, 2);
///     const std::string identifier = words.take("an extension's identifier");
///     const bool isOn = words.takeOneOf("a mode", {"on", "off"}) == "on";
class Words {
public:
    /// usage: the verb and its arguments. help: the verb whose help explains them.
    Words(std::vector<Word> words, std::string usage, std::string help, WrittenOn where = WrittenOn::commandLine);

    /// Takes the option; false if it is not there.
    bool takeFlag(std::string_view name);
    /// Takes the option and its value, the next word or what follows "="; nothing if it is not there. what: the value,
    /// for complaints.
    std::optional<std::string> takeOption(const std::string& name, const std::string& what);
    /// The same for a length of time, in milliseconds.
    std::optional<std::int64_t> takeDurationOption(const std::string& name);
    /// Takes everything after a "--" out of the words, and the "--"; nothing if there is none. Called before the
    /// options are taken.
    std::optional<WordList> takeCommand();
    /// On a command line, what is left must be that many words and no option.
    void expect(std::size_t least, std::size_t most) const;

    bool isAtEnd() const { return next_ == words_.size(); }
    /// No argument follows on a command line, so the current value is printed. A scenario cannot print it.
    bool asks() const { return isAtEnd() && areTyped(); }
    /// On a command line.
    bool areTyped() const { return where_ == WrittenOn::commandLine; }
    /// Takes the next word if it is this one, without quotes.
    bool takes(std::string_view word);
    /// Takes the next word. what: its name in complaints, such as "a build".
    std::string take(std::string_view what);
    /// The same; it must be one of these.
    std::string takeOneOf(std::string_view what, const WordList& known);
    void mustTake(std::string_view word);
    /// Takes words until, with one blank between them, they are one of these.
    std::string takePhrase(std::string_view what, const WordList& known);
    std::int64_t takeNumber(std::string_view what);
    /// "90s", as milliseconds.
    std::int64_t takeDuration();
    /// Takes every word that is left, at least one.
    WordList takeAll(std::string_view what);
    /// Nothing more may follow.
    void end() const;

    /// Of the file that the words name.
    void setContents(std::string contents) { contents_ = std::move(contents); }
    const std::string& contents() const { return contents_; }

    void setUsage(std::string usage) { usage_ = std::move(usage); }
    /// Throws NotUnderstood with the problem; in a scenario, with the usage too.
    [[noreturn]] void fail(const std::string& problem) const;
    /// Throws NotUnderstood with the problem and the usage.
    [[noreturn]] void misused(const std::string& problem) const;
    /// what: such as "a build".
    [[noreturn]] void reject(std::string_view what, std::string_view word, const WordList& known) const;

private:
    std::vector<Word>::iterator find(std::string_view option);
    bool isNext(std::string_view word) const;
    [[noreturn]] void missing(const std::string& what, const WordList& known = {}) const;
    std::int64_t durationIn(const std::string& word) const;

    std::vector<Word> words_;
    std::size_t next_ = 0;
    std::string usage_;
    std::string help_;
    WrittenOn where_;
    std::string contents_;
};

/// None of them quoted.
std::vector<Word> plainWords(const WordList& texts);
/// In it, a quote or a backslash has a backslash before it.
std::string inQuotes(std::string_view word);
/// Whether the word looks like an option.
bool isOption(std::string_view word);
/// Reads "90s", "1.5h", "250ms": digits, with or without a fraction, and one of ms, s, m, h, d; seconds if there is
/// none. Yields whole milliseconds, at most a thousand years of them; nothing if the text is anything else.
std::optional<std::int64_t> millisecondsOf(std::string_view text);

/// Writes milliseconds, which are not negative, as seconds with three decimals: "90.000".
std::string inSeconds(std::int64_t milliseconds);
/// A whole number, with or without a sign and blanks around it; nothing if the word is anything else.
std::optional<std::int64_t> numberIn(std::string_view word);
bool isOneOf(const WordList& known, const std::string& word);
/// The words of a list, with something between them.
std::string joined(const WordList& words, std::string_view between = ", ");

} // namespace simulator
