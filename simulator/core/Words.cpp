#include "simulator/core/Words.h"

#include "simulator/core/Answer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <sstream>

namespace simulator {

namespace {

constexpr std::string_view blanks = " \t\n\v\f\r";

/// "a build" -> "build"
std::string_view withoutArticle(std::string_view what) {
    for (const std::string_view article : {"a ", "an "})
        if (what.substr(0, article.size()) == article) return what.substr(article.size());
    return what;
}

std::string_view trimmed(std::string_view word) {
    const auto first = word.find_first_not_of(blanks);
    return first == std::string_view::npos ? word : word.substr(first, word.find_last_not_of(blanks) - first + 1);
}

struct Unit {
    std::string_view name;
    double milliseconds;
};

constexpr std::array units{
    Unit{"", 1000}, Unit{"ms", 1}, Unit{"s", 1000}, Unit{"m", 60e3}, Unit{"h", 3600e3}, Unit{"d", 24 * 3600e3},
};

std::string useOneOf(const WordList& known) {
    return "; use one of: " + joined(known);
}

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

} // namespace

Words::Words(std::vector<Word> words, std::string usage, std::string help, WrittenOn where)
    : words_{std::move(words)}, usage_{std::move(usage)}, help_{std::move(help)}, where_{where} {
}

// Options ------------------------------------------------------------------------------------------------------------

bool Words::takeFlag(std::string_view name) {
    const auto flag = find(name);
    if (flag == words_.end()) return false;
    words_.erase(flag);
    return true;
}

std::vector<Word>::iterator Words::find(std::string_view option) {
    return std::find_if(words_.begin(), words_.end(),
                        [&](const Word& word) { return !word.isQuoted && word.text == option; });
}

std::optional<std::string> Words::takeOption(const std::string& name, const std::string& what) {
    const std::string assigned = name + "=";
    const auto option = std::find_if(words_.begin(), words_.end(), [&](const Word& word) {
        return !word.isQuoted && (word.text == name || word.text.starts_with(assigned));
    });
    if (option == words_.end()) return std::nullopt;
    const bool isAssigned = option->text != name;
    if (!isAssigned && option + 1 == words_.end()) missing(what);
    const std::string value = isAssigned ? option->text.substr(assigned.size()) : (option + 1)->text;
    words_.erase(option, option + (isAssigned ? 1 : 2));
    return value;
}

std::optional<std::int64_t> Words::takeDurationOption(const std::string& name) {
    const auto word = takeOption(name, "a time");
    return word ? std::optional{durationIn(*word)} : std::nullopt;
}

std::optional<WordList> Words::takeCommand() {
    const auto end = find("--");
    if (end == words_.end()) return std::nullopt;
    WordList command;
    for (auto word = end + 1; word != words_.end(); ++word)
        command.push_back(word->text);
    words_.erase(end, words_.end());
    return command;
}

void Words::expect(std::size_t least, std::size_t most) const {
    if (!areTyped()) return;
    for (const Word& word : words_)
        if (!word.isQuoted && isOption(word.text)) misused("unexpected option " + inQuotes(word.text));
    if (words_.size() < least) misused("missing argument");
    if (words_.size() > most) misused("unexpected " + inQuotes(words_[most].text));
}

// Words --------------------------------------------------------------------------------------------------------------

bool Words::isNext(std::string_view word) const {
    return !isAtEnd() && !words_[next_].isQuoted && words_[next_].text == word;
}

bool Words::takes(std::string_view word) {
    const bool isThere = isNext(word);
    if (isThere) ++next_;
    return isThere;
}

std::string Words::take(std::string_view what) {
    const bool endsHere = isAtEnd() || (!areTyped() && isNext(","));
    if (endsHere) missing(std::string{what});
    return words_[next_++].text;
}

std::string Words::takeOneOf(std::string_view what, const WordList& known) {
    if (isAtEnd()) missing(std::string{what}, known);
    std::string word = take(what);
    if (!isOneOf(known, word)) reject(what, word, known);
    return word;
}

void Words::mustTake(std::string_view word) {
    if (takes(word)) return;
    if (isAtEnd()) missing(inQuotes(word));
    misused("expected " + inQuotes(word) + ", not " + inQuotes(words_[next_].text));
}

std::string Words::takePhrase(std::string_view what, const WordList& known) {
    std::string phrase = take(what);
    while (!isOneOf(known, phrase) && !isAtEnd() && !isNext(","))
        phrase += " " + take(what);
    if (!isOneOf(known, phrase)) reject(what, phrase, known);
    return phrase;
}

std::int64_t Words::takeNumber(std::string_view what) {
    const std::string word = take(what);
    const auto number = numberIn(word);
    if (!number) fail(inQuotes(word) + " is not " + std::string{what});
    return *number;
}

std::int64_t Words::takeDuration() {
    return durationIn(take("a time"));
}

std::int64_t Words::durationIn(const std::string& word) const {
    const auto length = millisecondsOf(word);
    if (!length) fail(inQuotes(word) + " is not a time; examples: 90s, 5m, 250ms");
    return *length;
}

WordList Words::takeAll(std::string_view what) {
    WordList all{take(what)};
    for (; !isAtEnd(); ++next_)
        all.push_back(words_[next_].text);
    return all;
}

void Words::end() const {
    if (!isAtEnd()) misused("unexpected " + inQuotes(words_[next_].text));
}

// Complaints ---------------------------------------------------------------------------------------------------------

void Words::fail(const std::string& problem) const {
    throw NotUnderstood{areTyped() ? problem : problem + "; usage: " + usage_};
}

void Words::misused(const std::string& problem) const {
    const std::string more = areTyped() ? "; see \"sysextctl " + help_ + " --help\"" : std::string{};
    throw NotUnderstood{problem + "; usage: " + usage_ + more};
}

void Words::missing(const std::string& what, const WordList& known) const {
    misused("missing " + std::string{withoutArticle(what)} + (known.empty() ? std::string{} : useOneOf(known)));
}

void Words::reject(std::string_view what, std::string_view word, const WordList& known) const {
    fail("unknown " + std::string{withoutArticle(what)} + " " + inQuotes(word) + useOneOf(known));
}

// Texts --------------------------------------------------------------------------------------------------------------

std::vector<Word> plainWords(const WordList& texts) {
    std::vector<Word> words;
    for (const std::string& text : texts)
        words.push_back({text});
    return words;
}

std::string inQuotes(std::string_view word) {
    std::string quoted{'"'};
    for (const char character : word) {
        if (character == '"' || character == '\\') quoted += '\\';
        quoted += character;
    }
    return quoted + '"';
}

bool isOption(std::string_view word) {
    return word.rfind("--", 0) == 0;
}

std::optional<std::int64_t> millisecondsOf(std::string_view text) {
    const std::string digits{text.substr(0, text.find_first_not_of("0123456789."))};
    std::istringstream stream{digits}; // not every standard library has from_chars for fractions
    double number = 0;
    const bool isNumber = stream >> number && stream.eof();
    if (!isNumber || !isDigit(digits.front()) || !isDigit(digits.back())) return std::nullopt;
    for (const Unit& unit : units) {
        if (unit.name != text.substr(digits.size())) continue;
        const double length = number * unit.milliseconds;
        if (!(length <= static_cast<double>(limits::time))) return std::nullopt;
        return static_cast<std::int64_t>(std::llround(length));
    }
    return std::nullopt;
}

std::string inSeconds(std::int64_t milliseconds) {
    const std::string thousandths = std::to_string(milliseconds % 1000);
    return std::to_string(milliseconds / 1000) + "." + std::string(3 - thousandths.size(), '0') + thousandths;
}

std::optional<std::int64_t> numberIn(std::string_view word) {
    word = trimmed(word);
    const bool hasPlus = word.size() > 1 && word[0] == '+' && word[1] != '-';
    if (hasPlus) word.remove_prefix(1);
    std::int64_t number = 0;
    const char* const end = word.data() + word.size();
    const auto result = std::from_chars(word.data(), end, number);
    const bool isWhole = result.ec == std::errc{} && result.ptr == end;
    return isWhole ? std::optional{number} : std::nullopt;
}

bool isOneOf(const WordList& known, const std::string& word) {
    return std::find(known.begin(), known.end(), word) != known.end();
}

std::string joined(const WordList& words, std::string_view between) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? std::string{} : std::string{between}) + word;
    return text;
}

} // namespace simulator
