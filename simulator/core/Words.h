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

/// Words that make no sense; what() is one line that says what is wrong, or what would be right.
class NotUnderstood : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Word {
    std::string text;
    /// It is nothing but a text: neither an option nor a word that means something.
    bool isQuoted = false;
};

using WordList = std::vector<std::string>;

/// Where words were written. On a command line options may stand anywhere, and what is wrong with their number is found
/// first; a line of a scenario is read from left to right, and what is wrong is said together with its usage.
enum class WrittenOn { commandLine, scenario };

/// What is left to read of the words that follow a verb. Whatever is not as it must be is thrown as NotUnderstood.
/// First the options are taken, then expect() is called, then the words are taken in their order, then end() is called.
///
///     words.expect(1, 2);
///     const std::string identifier = words.take("an extension's identifier");
///     const bool isOn = words.takeOneOf("a mode", {"on", "off"}) == "on";
class Words {
public:
    /// usage: what the words should look like, with the verb. help: the verb of the command line whose help says more.
    Words(std::vector<Word> words, std::string usage, std::string help, WrittenOn where = WrittenOn::commandLine);

    /// Takes the option out of the words; says whether it was there.
    bool takeFlag(std::string_view name);
    /// Takes the option and the word after it, or after its "=", out of the words; nothing if it was not there. what:
    /// how a complaint calls that word.
    std::optional<std::string> takeOption(const std::string& name, const std::string& what);
    /// The same for a length of time, in milliseconds.
    std::optional<std::int64_t> takeDurationOption(const std::string& name);
    /// Takes everything after a "--" out of the words, and the "--"; nothing if there is none. Called before the
    /// options are taken.
    std::optional<WordList> takeCommand();
    /// On a command line, what is left must be that many words and no option.
    void expect(std::size_t least, std::size_t most) const;

    bool isAtEnd() const { return next_ == words_.size(); }
    /// Nothing follows on a command line, which asks how it is. In a scenario nobody would hear the answer.
    bool asks() const { return isAtEnd() && areTyped(); }
    /// On a command line.
    bool areTyped() const { return where_ == WrittenOn::commandLine; }
    std::size_t count() const { return words_.size() - next_; }
    /// Takes the next word if it is this one, without quotes.
    bool takes(std::string_view word);
    /// Takes the next word, whatever it is. what: how a complaint calls it, such as "a build".
    std::string take(std::string_view what);
    /// The same; it must be one of these.
    std::string takeOneOf(std::string_view what, const WordList& known);
    void mustTake(std::string_view word);
    /// Takes words until, with one blank between them, they are one of these.
    std::string takePhrase(std::string_view what, const WordList& known);
    std::int64_t takeNumber(std::string_view what);
    /// "90s", as milliseconds.
    std::int64_t takeDuration();
    WordList takeAll();
    /// Nothing more may follow.
    void end() const;

    /// What the file held that the words name.
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

/// Each as it stands, which is how a command line is written.
std::vector<Word> plainWords(const WordList& texts);
/// In it, a quote or a backslash has a backslash before it.
std::string inQuotes(std::string_view word);
/// Whether it looks like one.
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
