#include "simulator/scenario/Line.h"

#include "simulator/scenario/Duration.h"
#include "simulator/scenario/ScenarioError.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace simulator::scenario {

namespace {

std::string quoted(std::string_view word) {
    return "\"" + std::string{word} + "\"";
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text;
}

std::optional<std::int64_t> numberOf(const std::string& text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc{} && result.ptr == end ? std::optional{number} : std::nullopt;
}

} // namespace

Line::Line(std::string name, std::size_t number, std::vector<Word> words)
    : name_{std::move(name)}, number_{number}, words_{std::move(words)} {
}

bool Line::isNext(std::string_view word) const {
    return !isAtEnd() && !words_[next_].isQuoted && words_[next_].text == word;
}

bool Line::takes(std::string_view word) {
    const bool isThere = isNext(word);
    if (isThere) ++next_;
    return isThere;
}

std::string Line::take(std::string_view what) {
    if (isAtEnd() || isNext(",")) fail(std::string{what} + " is missing");
    return words_[next_++].text;
}

std::string Line::takeOneOf(std::string_view what, const std::vector<std::string>& known) {
    if (isAtEnd()) fail(std::string{what} + " is missing; there is " + joined(known));
    std::string word = take(what);
    if (std::find(known.begin(), known.end(), word) == known.end()) failUnknown(what, word, known);
    return word;
}

void Line::mustTake(std::string_view word) {
    if (takes(word)) return;
    if (isAtEnd()) fail(quoted(word) + " is missing");
    fail(quoted(words_[next_].text) + " stands where " + quoted(word) + " should");
}

std::string Line::takePhrase(std::string_view what) {
    std::string phrase = take(what);
    while (!isAtEnd() && !isNext(","))
        phrase += " " + words_[next_++].text;
    return phrase;
}

std::int64_t Line::takeNumber(std::string_view what) {
    const std::string word = take(what);
    const auto number = numberOf(word);
    if (!number) fail(quoted(word) + " is not " + std::string{what});
    return *number;
}

std::int64_t Line::takeDuration() {
    const std::string word = take("a time");
    const auto length = millisecondsOf(word);
    if (!length) fail(quoted(word) + " is not a time; examples are 90s, 5m and 250ms");
    return *length;
}

Version Line::takeVersion() {
    const std::string word = take("a version");
    const auto slash = word.find('/');
    if (slash == std::string::npos) fail(quoted(word) + " is not a version; an example is 2.1/2105");
    return {word.substr(0, slash), word.substr(slash + 1)};
}

void Line::end() const {
    if (!isAtEnd()) fail(quoted(words_[next_].text) + " is too much");
}

void Line::fail(const std::string& wrong) const {
    throw ScenarioError{name_, number_, usage_.empty() ? wrong : wrong + "; right would be: " + usage_};
}

void Line::failUnknown(std::string_view what, std::string_view word, const std::vector<std::string>& known) const {
    fail(quoted(word) + " is not " + std::string{what} + "; there is " + joined(known));
}

} // namespace simulator::scenario
