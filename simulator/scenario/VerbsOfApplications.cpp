// What applications do.

#include "simulator/scenario/Reading.h"

#include <utility>

namespace simulator::scenario {

namespace {

Ask::Reply takeReply(Line& line) {
    const std::string reply = line.takeOneOf("an answer", {"replace", "cancel", "later"});
    if (reply == "replace") return Ask::Reply::replace;
    return reply == "cancel" ? Ask::Reply::cancel : Ask::Reply::later;
}

template <RequestKind kind>
Action readAsk(Reading& reading) {
    Line& line = reading.line;
    Ask ask;
    ask.kind = kind;
    ask.identifier = line.take("an extension's identifier");
    ask.application = takeApplicationAfter("as", reading);
    ask.request = line.takes("called") ? line.take("a request's name") : ask.identifier;
    if (kind == RequestKind::activation && line.takes("answering")) ask.reply = takeReply(line);
    return ask;
}

Action readAnswer(Reading& reading) {
    Line& line = reading.line;
    AnswerQuestion answer;
    answer.request = line.take("a request's name");
    answer.replace = line.takeOneOf("an answer", {"replace", "cancel"}) == "replace";
    answer.application = takeApplicationAfter("as", reading);
    return answer;
}

Action readQuit(Reading& reading) {
    return Quit{takeApplication(reading)};
}

Action readExpect(Reading& reading) {
    return readExpectation(reading);
}

} // namespace

const std::vector<Verb>& verbsOfApplications() {
    static const std::vector<Verb> verbs{
        {"activate", "ID [as NAME] [called REQUEST] [answering replace|cancel|later]",
         readAsk<RequestKind::activation>},
        {"deactivate", "ID [as NAME] [called REQUEST]", readAsk<RequestKind::deactivation>},
        {"properties", "ID [as NAME] [called REQUEST]", readAsk<RequestKind::properties>},
        {"answer", "REQUEST replace|cancel [as NAME]", readAnswer},
        {"quit", "NAME", readQuit},
        {"expect", "WHAT ...", readExpect},
    };
    return verbs;
}

} // namespace simulator::scenario
