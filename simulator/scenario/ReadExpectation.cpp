#include "simulator/core/Request.h"
#include "simulator/scenario/Reading.h"

#include <array>
#include <utility>

namespace simulator::scenario {

namespace {

Expectation withAskers(Reading& reading, ExpectedAnswer answer) {
    ExpectAnswer expectation;
    expectation.answer = std::move(answer);
    if (reading.line.takes("to")) expectation.request = reading.line.take("a request's name");
    expectation.application = takeApplicationAfter("as", reading);
    return expectation;
}

Expectation readNeedsApproval(Reading& reading) {
    reading.line.mustTake("approval");
    return withAskers(reading, NeedsApproval{});
}

Expectation readQuestion(Reading& reading) {
    Line& line = reading.line;
    line.mustTake("to");
    line.mustTake("replace");
    ExpectedQuestion question;
    question.existing = line.takeVersion();
    line.mustTake("by");
    question.replacement = line.takeVersion();
    return withAskers(reading, question);
}

Expectation readFinished(Reading& reading) {
    const bool isCompleted = reading.line.takeOneOf("a result", {"0", "1"}) == "0";
    return withAskers(reading, Finished{isCompleted ? Finished::completed : Finished::willCompleteAfterReboot});
}

Expectation readFailed(Reading& reading) {
    Line& line = reading.line;
    ExpectedFailure failure{line.takeNumber("a code"), std::string{extensionErrorDomain}, std::nullopt};
    if (line.takes("without")) {
        line.mustTake("description");
        failure.description = std::string{};
    } else if (line.takes("saying")) {
        failure.description = line.take("a description");
    }
    if (line.takes("domain")) failure.domain = line.take("a domain");
    return withAskers(reading, failure);
}

Expectation readFound(Reading& reading) {
    Line& line = reading.line;
    ExpectedProperties properties;
    if (line.takes("none")) return withAskers(reading, properties);
    do {
        const Version version = line.takeVersion();
        properties.records.push_back(
            {version, line.takeOneOf("a state", {"enabled", "waiting", "disabled", "uninstalling"})});
    } while (line.takes(","));
    return withAskers(reading, properties);
}

Expectation readNothing(Reading& reading) {
    if (!reading.line.takes("as")) return ExpectNothing{};
    return ExpectNothing{takeApplication(reading)};
}

// Copies -------------------------------------------------------------------------------------------------------------

CopyState takeCopyState(Line& line) {
    const std::string text = line.takePhrase("a state");
    if (const auto state = copyStateWithText(text)) return *state;
    std::vector<std::string> known;
    for (const CopyStateRow& row : copyStates)
        known.emplace_back(row.text);
    line.failUnknown("a state", text, known);
}

CopyThere takeCopy(Line& line) {
    const Version version = line.takeVersion();
    return {version, takeCopyState(line)};
}

Expectation readCopy(Reading& reading) {
    const std::string identifier = reading.line.take("an extension's identifier");
    return ExpectCopy{identifier, takeCopy(reading.line)};
}

Expectation readCopies(Reading& reading) {
    Line& line = reading.line;
    ExpectCopies expectation{line.take("an extension's identifier"), {}};
    if (line.takes("none")) return expectation;
    do {
        expectation.copies.push_back(takeCopy(line));
    } while (line.takes(","));
    return expectation;
}

// Requests -----------------------------------------------------------------------------------------------------------

Expectation readRequests(Reading& reading) {
    Line& line = reading.line;
    if (line.takes("none")) return ExpectRequests{0};
    const std::int64_t count = line.takeNumber("a number of requests");
    if (count < 0) line.fail("a number of requests is not negative");
    return ExpectRequests{static_cast<std::size_t>(count)};
}

Expectation readRequest(Reading& reading) {
    std::vector<std::string> stages;
    for (const Stage stage : {Stage::replacement, Stage::user, Stage::authorization, Stage::delayed, Stage::silent}) {
        stages.emplace_back(nameOf(stage));
    }
    const std::string identifier = reading.line.take("an extension's identifier");
    return ExpectRequest{identifier, reading.line.takeOneOf("a stage", stages)};
}

struct Kind {
    std::string_view word;
    std::string_view rest;
    Expectation (*read)(Reading& reading);
};

constexpr std::array kinds{
    Kind{"needs", "approval [to REQUEST] [as NAME]", readNeedsApproval},
    Kind{"asked", "to replace SHORT/BUILD by SHORT/BUILD [to REQUEST] [as NAME]", readQuestion},
    Kind{"finished", "0|1 [to REQUEST] [as NAME]", readFinished},
    Kind{"failed", "CODE [saying TEXT | without description] [domain DOMAIN] [to REQUEST] [as NAME]", readFailed},
    Kind{"found", "none | SHORT/BUILD enabled|waiting|disabled|uninstalling, ... [to REQUEST] [as NAME]", readFound},
    Kind{"nothing", "[as NAME]", readNothing},
    Kind{"copy", "ID SHORT/BUILD STATE", readCopy},
    Kind{"copies", "ID none | SHORT/BUILD STATE, ...", readCopies},
    Kind{"requests", "none | NUMBER", readRequests},
    Kind{"request", "ID replacement|user|authorization|delayed|silent", readRequest},
};

std::string usageOf(const Kind& kind) {
    return "expect " + std::string{kind.word} + " " + std::string{kind.rest};
}

} // namespace

std::vector<std::string> usagesOfExpect() {
    std::vector<std::string> usages;
    for (const Kind& kind : kinds)
        usages.push_back(usageOf(kind));
    return usages;
}

Expectation readExpectation(Reading& reading) {
    std::vector<std::string> known;
    for (const Kind& kind : kinds)
        known.emplace_back(kind.word);
    const std::string word = reading.line.takeOneOf("what may be expected", known);
    for (const Kind& kind : kinds) {
        if (kind.word != word) continue;
        reading.line.setUsage(usageOf(kind));
        return kind.read(reading);
    }
    reading.line.fail("\"" + word + "\" is not what may be expected");
}

} // namespace simulator::scenario
