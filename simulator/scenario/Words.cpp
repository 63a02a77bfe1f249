#include "simulator/scenario/Words.h"

#include <cstddef>
#include <utility>

namespace simulator::scenario {

namespace {

constexpr std::string_view blanks = " \t\r";

bool isBlank(char character) {
    return blanks.find(character) != std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The text in quotes that begins at the position, which is then behind the closing quote; nothing if there is none.
std::optional<std::string> takeQuoted(std::string_view line, std::size_t& position) {
    std::string text;
    for (++position; position < line.size(); ++position) {
        if (line[position] == '"') {
            ++position;
            return text;
        }
        const bool isEscape = line[position] == '\\' && position + 1 < line.size();
        if (isEscape && (line[position + 1] == '"' || line[position + 1] == '\\')) ++position;
        text += line[position];
    }
    return std::nullopt;
}

std::string takePlain(std::string_view line, std::size_t& position) {
    const std::size_t begin = position;
    while (position < line.size() && !isBlank(line[position]))
        ++position;
    return std::string{line.substr(begin, position - begin)};
}

void addPlain(std::vector<Word>& words, std::string text) {
    const bool endsList = text.size() > 1 && text.back() == ',';
    if (endsList) text.pop_back();
    words.push_back({std::move(text), false});
    if (endsList) words.push_back({",", false});
}

} // namespace

std::optional<Words> wordsOf(std::string_view line) {
    Words result;
    std::size_t position = 0;
    while (position < line.size() && line[position] != '#') {
        if (isBlank(line[position])) {
            ++position;
        } else if (line[position] == '"') {
            auto text = takeQuoted(line, position);
            if (!text) return std::nullopt;
            result.words.push_back({std::move(*text), true});
        } else {
            addPlain(result.words, takePlain(line, position));
        }
    }
    result.text = trimmed(line.substr(0, position));
    return result;
}

} // namespace simulator::scenario
