#include "simulator/scenario/Scenario.h"

#include "simulator/scenario/FileContents.h"
#include "simulator/scenario/Reading.h"
#include "simulator/scenario/SampleApplication.h"
#include "simulator/scenario/ScenarioError.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace simulator::scenario {

namespace {

std::vector<Verb> everyVerb() {
    std::vector<Verb> all;
    for (const auto* const group : {&verbsOfTheDisk(), &verbsOfApplications(), &verbsOfTheMac()})
        all.insert(all.end(), group->begin(), group->end());
    return all;
}

std::string usageOf(const Verb& verb) {
    const std::string name{verb.name};
    return verb.arguments.empty() ? name : name + " " + std::string{verb.arguments};
}

Action readAction(Reading& reading) {
    const std::string word = reading.line.take("a verb");
    std::vector<std::string> known;
    for (const Verb& verb : everyVerb()) {
        known.emplace_back(verb.name);
        if (verb.name != word) continue;
        reading.line.setUsage(usageOf(verb));
        Action action = verb.read(reading);
        reading.line.end();
        return action;
    }
    reading.line.failUnknown("a verb", word, known);
}

/// What some editors put before a text in UTF-8.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

std::string_view withoutByteOrderMark(std::string_view text) {
    return text.substr(text.rfind(byteOrderMark, 0) == 0 ? byteOrderMark.size() : 0);
}

std::string whyNotRead(const std::string& path) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) return "it is a folder";
    return std::filesystem::exists(path, error) ? "it cannot be read" : "there is no such file";
}

/// Takes the first line off the text.
std::string_view takeLine(std::string_view& text) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
    return line;
}

} // namespace

std::string takeApplication(Reading& reading) {
    const std::string name = reading.line.take("an application's name");
    if (reading.applications.count(name) == 0) {
        reading.line.failUnknown("an application", name, {reading.applications.begin(), reading.applications.end()});
    }
    return name;
}

std::string takeApplicationAfter(std::string_view word, Reading& reading) {
    return reading.line.takes(word) ? takeApplication(reading) : sampleName;
}

Scenario readScenario(std::string_view text, const std::string& name, const std::string& folder) {
    if (text.find('\0') != std::string_view::npos) throw ScenarioError{name, "it is no text in UTF-8"};
    text = withoutByteOrderMark(text);
    Scenario scenario{name, {}};
    std::set<std::string> applications{sampleName};
    for (std::size_t number = 1; !text.empty(); ++number) {
        auto words = wordsOf(takeLine(text));
        if (!words) throw ScenarioError{name, number, "a quote is not closed; right would be \"in quotes\""};
        if (words->words.empty()) continue;
        Line line{name, number, std::move(words->words)};
        Reading reading{line, applications, folder};
        scenario.steps.push_back({number, std::move(words->text), readAction(reading)});
    }
    if (scenario.steps.empty()) throw ScenarioError{name, "it has no step"};
    return scenario;
}

Scenario readScenarioFile(const std::string& path) {
    const auto text = contentsOfFile(path);
    if (!text) throw ScenarioError{path, whyNotRead(path)};
    const auto slash = path.rfind('/');
    return readScenario(*text, path, slash == std::string::npos ? "." : path.substr(0, slash));
}

std::string grammar() {
    std::string text;
    for (const Verb& verb : everyVerb()) {
        if (verb.name != "expect") text += usageOf(verb) + '\n';
    }
    for (const std::string& usage : usagesOfExpect())
        text += usage + '\n';
    return text;
}

} // namespace simulator::scenario
