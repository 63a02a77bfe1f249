#pragma once

#include "simulator/core/Copy.h"
#include "simulator/scenario/Words.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace simulator::scenario {

/// What is left to read of a line. Whatever is not as it must be ends in a ScenarioError that says what would be right.
class Line {
public:
    Line(std::string name, std::size_t number, std::vector<Word> words);

    /// What the line as a whole should look like, for complaints.
    void setUsage(std::string_view usage) { usage_ = usage; }

    bool isAtEnd() const { return next_ == words_.size(); }
    /// Takes the next word if it is this one, without quotes.
    bool takes(std::string_view word);
    /// Takes the next word, whatever it is. what: how a complaint calls it, such as "an identifier".
    std::string take(std::string_view what);
    /// The same; it must be one of these.
    std::string takeOneOf(std::string_view what, const std::vector<std::string>& known);
    void mustTake(std::string_view word);
    /// All words up to the next comma, with one blank between them.
    std::string takePhrase(std::string_view what);

    std::int64_t takeNumber(std::string_view what);
    /// "90s", as milliseconds.
    std::int64_t takeDuration();
    /// "2.1/2105"
    Version takeVersion();

    /// Nothing more may follow.
    void end() const;
    [[noreturn]] void fail(const std::string& wrong) const;
    [[noreturn]] void failUnknown(std::string_view what, std::string_view word,
                                  const std::vector<std::string>& known) const;

private:
    bool isNext(std::string_view word) const;

    std::string name_;
    std::size_t number_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
    std::string usage_;
};

} // namespace simulator::scenario
