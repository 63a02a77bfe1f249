// What may follow "expect" in a scenario.

#include "simulator/player/Scenario.h"

#include <algorithm>

namespace simulator::player {

namespace {

/// Takes "none", or what there is, with commas between.
template <typename Item>
std::vector<Item> takeList(Words& words, Item (*take)(Words&)) {
    std::vector<Item> list;
    if (words.takes("none")) return list;
    do
        list.push_back(take(words));
    while (words.takes(","));
    return list;
}

std::string listed(const WordList& there) {
    return there.empty() ? "none" : joined(there);
}

// Answers ------------------------------------------------------------------------------------------------------------

/// failed 8 "why" domain "whose" -> failed 8 domain "whose". A quote in a description has a backslash before it.
std::string withoutDescription(const std::string& answer) {
    if (answer.rfind("failed ", 0) != 0) return answer;
    const std::string code = answer.substr(0, answer.find(" \""));
    const auto domain = answer.find("\" domain \"");
    return domain == std::string::npos ? code : code + answer.substr(domain + 1);
}

std::string heardText(const std::optional<Heard>& heard) {
    return heard ? heard->text + " to " + heard->request : "nothing";
}

void expectNothingOf(Mac& mac, const std::string& application) {
    if (const auto heard = mac.hear(application)) throw NotDone{application + " heard " + heardText(heard)};
}

/// The answer must be that text, with or without the description of a failure.
Play expectAnswer(Reading& reading, const std::string& text) {
    const std::string request = reading.words.takes("to") ? reading.words.take("a request's name") : std::string{};
    const std::string application = takeApplicationAfter("as", reading);
    return [=](Mac& mac) {
        const auto heard = mac.hear(application);
        const bool isText = heard && (heard->text == text || withoutDescription(heard->text) == text);
        if (isText && (request.empty() || request == heard->request)) return;
        throw NotDone{application + " heard " + heardText(heard)};
    };
}

Play needs(Reading& reading) {
    reading.words.mustTake("approval");
    return expectAnswer(reading, "needs approval");
}

Play asked(Reading& reading) {
    reading.words.mustTake("to");
    reading.words.mustTake("replace");
    const std::string existing = textOf(takeVersion(reading.words));
    reading.words.mustTake("by");
    return expectAnswer(reading, "asked to replace " + existing + " by " + textOf(takeVersion(reading.words)));
}

Play finished(Reading& reading) {
    return expectAnswer(reading, "finished " + reading.words.takeOneOf("a result", {"0", "1"}));
}

Play failed(Reading& reading) {
    Words& words = reading.words;
    Failure failure{std::string{extensionErrorDomain}, words.takeNumber("a code"), {}};
    const bool isBare = words.takes("without");
    if (isBare) words.mustTake("description");
    const bool isSaid = isBare || words.takes("saying");
    if (isSaid && !isBare) failure.description = words.take("a description");
    if (words.takes("domain")) failure.domain = words.take("a domain");
    const std::string text = textOf(failure);
    return expectAnswer(reading, isSaid ? text : withoutDescription(text));
}

/// A copy as the service reports it.
std::string takeReport(Words& words) {
    const std::string version = textOf(takeVersion(words));
    const std::string state = words.takePhrase("a state", wordsForStates(&CopyStateRow::reported));
    return version + " " + std::string{conditionFor(state)};
}

Play found(Reading& reading) {
    return expectAnswer(reading, "found " + listed(takeList(reading.words, takeReport)));
}

Play nothing(Reading& reading) {
    if (!reading.words.takes("as")) return expectNothing;
    return [application = takeApplication(reading)](Mac& mac) { expectNothingOf(mac, application); };
}

// Copies and requests ------------------------------------------------------------------------------------------------

/// The texts of which a copy must have one: a state is named by its text or by its condition.
WordList takeCopy(Words& words) {
    const std::string version = textOf(takeVersion(words));
    const std::string state = words.takePhrase("a state", wordsForStates());
    WordList texts;
    for (const CopyStateRow& row : copyStates)
        if (state == row.text || state == row.condition) texts.push_back(version + " " + std::string{row.text});
    return texts;
}

using Look = std::function<WordList(Mac&)>;

/// Waits until the list is right.
Play expectList(const std::string& what, const Look& look, const std::function<bool(const WordList&)>& isRight) {
    return [=](Mac& mac) {
        WordList there;
        const bool isThere = mac.await([&] { return isRight(there = look(mac)); });
        if (!isThere) throw NotDone{what + " are: " + listed(there)};
    };
}

Play expectCopies(const std::string& identifier, const std::function<bool(const WordList&)>& isRight) {
    const auto look = [identifier](Mac& mac) { return mac.copies(identifier); };
    return expectList("the copies of " + identifier, look, isRight);
}

Play copy(Reading& reading) {
    const std::string identifier = reading.words.take("an extension identifier");
    return expectCopies(identifier, [expected = takeCopy(reading.words)](const WordList& there) {
        return std::find_first_of(there.begin(), there.end(), expected.begin(), expected.end()) != there.end();
    });
}

Play copies(Reading& reading) {
    const std::string identifier = reading.words.take("an extension identifier");
    return expectCopies(identifier, [expected = takeList(reading.words, takeCopy)](const WordList& there) {
        return std::equal(expected.begin(), expected.end(), there.begin(), there.end(), isOneOf);
    });
}

Play requests(Reading& reading) {
    const std::int64_t count = reading.words.takes("none") ? 0 : reading.words.takeNumber("a number of requests");
    if (count < 0) reading.words.fail("a number of requests is not negative");
    return expectList("the open requests", &Mac::requests,
                      [size = static_cast<std::size_t>(count)](const WordList& there) { return there.size() == size; });
}

Play request(Reading& reading) {
    WordList stages;
    for (const Stage stage : {Stage::replacement, Stage::user, Stage::authorization, Stage::delayed, Stage::silent})
        stages.emplace_back(nameOf(stage));
    const std::string identifier = reading.words.take("an extension identifier");
    return expectList("the open requests", &Mac::requests,
                      [text = identifier + " " + reading.words.takeOneOf("a stage", stages)](const WordList& there) {
                          return isOneOf(there, text);
                      });
}

Play exit(Reading& reading) {
    return [expected = reading.words.takeNumber("an exit status")](Mac& mac) {
        const int status = mac.statusOfCommand();
        if (status != expected) throw NotDone{"the command exited with " + std::to_string(status)};
    };
}

} // namespace

void expectNothing(Mac& mac) {
    for (const std::string& application : mac.applications())
        expectNothingOf(mac, application);
}

const std::vector<LineVerb>& expectations() {
    static const std::vector<LineVerb> all{
        {"needs", "approval [to REQUEST] [as NAME]", needs},
        {"asked", "to replace SHORT/BUILD by SHORT/BUILD [to REQUEST] [as NAME]", asked},
        {"finished", "0|1 [to REQUEST] [as NAME]", finished},
        {"failed", "CODE [saying TEXT | without description] [domain DOMAIN] [to REQUEST] [as NAME]", failed},
        {"found", "none | SHORT/BUILD STATE, ... [to REQUEST] [as NAME]", found},
        {"nothing", "[as NAME]", nothing},
        {"copy", "ID SHORT/BUILD STATE", copy},
        {"copies", "ID none | SHORT/BUILD STATE, ...", copies},
        {"requests", "none | NUMBER", requests},
        {"request", "ID replacement|user|authorization|delayed|silent", request},
        {"exit", "STATUS", exit},
    };
    return all;
}

Play readExpectation(Reading& reading) {
    WordList known;
    for (const LineVerb& expectation : expectations())
        known.emplace_back(expectation.word);
    const std::string word = reading.words.takeOneOf("an expectation", known);
    const auto expectation = std::find_if(expectations().begin(), expectations().end(),
                                          [&](const LineVerb& row) { return row.word == word; });
    reading.words.setUsage("expect " + usageOf(expectation->word, expectation->usage));
    return expectation->read(reading);
}

} // namespace simulator::player
