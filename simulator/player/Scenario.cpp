#include "simulator/player/Scenario.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <sstream>
#include <utility>

namespace simulator::player {

namespace {

// The words of a line ------------------------------------------------------------------------------------------------

constexpr std::string_view blanks = " \t\r";

/// Takes the text in quotes that the line begins with; in it \" is a quote and \\ a backslash.
Word takeQuoted(std::string_view& line) {
    std::string text;
    for (std::size_t i = 1; i < line.size(); ++i) {
        if (line[i] == '"') {
            line.remove_prefix(i + 1);
            return {text, true};
        }
        const bool isEscape = line[i] == '\\' && i + 1 < line.size();
        if (isEscape && (line[i + 1] == '"' || line[i + 1] == '\\')) ++i;
        text += line[i];
    }
    throw NotUnderstood{"missing closing quote"};
}

/// Takes the word that the line begins with. A comma that ends it is a word of its own.
void takePlain(std::string_view& line, std::vector<Word>& words) {
    std::string_view word = line.substr(0, line.find_first_of(blanks));
    line.remove_prefix(word.size());
    const bool endsList = word.size() > 1 && word.back() == ',';
    if (endsList) word.remove_suffix(1);
    words.push_back({std::string{word}});
    if (endsList) words.push_back({","});
}

/// Blanks separate words. A # at the start of a word starts a comment, which stays in the line.
std::vector<Word> takeWords(std::string_view& line) {
    std::vector<Word> words;
    while (!line.empty() && line.front() != '#') {
        if (blanks.find(line.front()) != std::string_view::npos)
            line.remove_prefix(1);
        else if (line.front() == '"')
            words.push_back(takeQuoted(line));
        else
            takePlain(line, words);
    }
    return words;
}

// Files --------------------------------------------------------------------------------------------------------------

/// Nothing if there is no such file, or it cannot be read.
std::optional<std::string> contentsOfFile(const std::string& path) {
    QFile file{QString::fromStdString(path)};
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const auto contents = file.readAll().toStdString();
    return file.error() == QFileDevice::NoError ? std::optional{contents} : std::nullopt;
}

std::string whyNotRead(const std::string& path) {
    const QFileInfo file{QString::fromStdString(path)};
    if (file.isDir()) return "is a folder";
    return file.exists() ? "cannot be read" : "no such file";
}

std::string contentsBeside(const std::string& folder, const std::string& file, const std::string& usage) {
    const std::string path = file.rfind('/', 0) == 0 ? file : folder + "/" + file;
    auto contents = contentsOfFile(path);
    if (contents && !contents->empty()) return *std::move(contents);
    throw NotUnderstood{inQuotes(path) + " cannot be read; usage: " + usage};
}

// Lines --------------------------------------------------------------------------------------------------------------

/// The domain of a fault may follow its description without the option, and the option may be the last word.
void nameDomain(std::vector<Word>& line, std::string_view option) {
    const bool isError = line.front().text == "fault" && line.size() > 4 && numberIn(line[3].text);
    const auto isOption = [&](const Word& word) { return !word.isQuoted && word.text == option; };
    const bool isNamed = std::any_of(line.begin(), line.end(), isOption);
    if (isError && line.size() == 6 && !isNamed) line.insert(line.end() - 1, {std::string{option}});
    if (isError && isOption(line.back())) line.pop_back();
}

/// A verb of the machine.
Play readVerb(const Verb& verb, std::vector<Word> line, const std::string& folder) {
    nameDomain(line, verb.option);
    for (Word& word : line)
        if (word.text != verb.option) word.isQuoted = word.isQuoted || isOption(word.text);
    Saying saying{std::move(line), {}};
    understood(saying, WrittenOn::scenario); // or else this line is wrong
    if (names(saying.words, Verb::Names::file))
        saying.contents = contentsBeside(folder, saying.words.back().text, lineOf(verb));
    return [saying](Mac& mac) { mac.perform(saying); };
}

WordList knownWords() {
    WordList known;
    for (const LineVerb& verb : lineVerbs())
        known.emplace_back(verb.word);
    for (const Verb& verb : verbs())
        if (verb.line != noLine) known.emplace_back(verb.word);
    return known;
}

/// A line's own verb, with what follows it.
Play readRest(const LineVerb& verb, std::vector<Word> line, std::set<std::string>& applications) {
    line.erase(line.begin());
    Words words{std::move(line), usageOf(verb.word, verb.usage), "play", WrittenOn::scenario};
    Reading reading{words, applications};
    Play play = verb.read(reading);
    words.end();
    return play;
}

Play readLine(std::vector<Word> line, std::set<std::string>& applications, const std::string& folder) {
    const std::string word = line.front().text;
    for (const LineVerb& verb : lineVerbs())
        if (verb.word == word) return readRest(verb, std::move(line), applications);
    if (const Verb* const verb = verbNamed(word); verb && verb->line != noLine)
        return readVerb(*verb, std::move(line), folder);
    throw NotUnderstood{"unknown verb " + inQuotes(word) + "; use one of: " + joined(knownWords())};
}

/// What some editors put before a text in UTF-8.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Nothing: the line is empty, or a comment.
std::optional<Step> readStep(std::size_t number, std::string_view line, std::set<std::string>& applications,
                             const std::string& folder) {
    std::string_view rest = line;
    std::vector<Word> words = takeWords(rest);
    if (words.empty()) return std::nullopt;
    line.remove_suffix(rest.size());
    const auto first = line.find_first_not_of(blanks);
    const std::string text{line.substr(first, line.find_last_not_of(blanks) - first + 1)};
    return Step{number, text, readLine(std::move(words), applications, folder)};
}

} // namespace

Scenario readScenario(std::string_view text, const std::string& name, const std::string& folder) {
    if (text.find('\0') != std::string_view::npos) throw ScenarioError{name + ": not a text in UTF-8"};
    if (text.rfind(byteOrderMark, 0) == 0) text.remove_prefix(byteOrderMark.size());
    Scenario scenario;
    std::set<std::string> applications{sampleName};
    std::istringstream lines{std::string{text}};
    std::string line;
    for (std::size_t number = 1; std::getline(lines, line); ++number) {
        try {
            if (auto step = readStep(number, line, applications, folder)) scenario.push_back(*std::move(step));
        } catch (const NotUnderstood& problem) {
            throw ScenarioError{name + ":" + std::to_string(number) + ": " + problem.what()};
        }
    }
    if (scenario.empty()) throw ScenarioError{name + ": the scenario is empty"};
    return scenario;
}

Scenario readScenarioFile(const std::string& path) {
    const bool isInput = path == "-";
    const std::string name = isInput ? "standard input" : path;
    const auto text = contentsOfFile(isInput ? "/dev/stdin" : path);
    if (!text) throw ScenarioError{name + ": " + whyNotRead(path)};
    const auto slash = path.rfind('/');
    return readScenario(*text, name, slash == std::string::npos ? "." : path.substr(0, slash));
}

std::string grammar() {
    std::string lines;
    for (const LineVerb& verb : lineVerbs())
        if (verb.word != "expect") lines += usageOf(verb.word, verb.usage) + "\n";
    for (const Verb& verb : verbs())
        if (verb.line != noLine) lines += lineOf(verb) + "\n";
    for (const LineVerb& expectation : expectations())
        lines += "expect " + usageOf(expectation.word, expectation.usage) + "\n";
    return lines;
}

std::optional<Mismatch> play(const Scenario& scenario, Mac& mac, const std::function<void(const Step&)>& begins) {
    std::size_t line = scenario.front().line;
    std::string text = "the sample application";
    try {
        mac.put(sampleName, sampleApplication());
        for (const Step& step : scenario) {
            line = step.line;
            text = "\"" + step.text + "\"";
            if (begins) begins(step);
            step.play(mac);
        }
        text = "no line expects what follows";
        expectNothing(mac);
        mac.stopCommand();
    } catch (const NotDone& problem) {
        return Mismatch{line, text + ": " + problem.what()};
    }
    return std::nullopt;
}

} // namespace simulator::player
