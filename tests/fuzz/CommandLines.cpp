#include "simulator/sysextctl/Commands.h"
#include "simulator/sysextctl/Output.h"
#include "tests/fuzz/Bytes.h"

// Command lines of sysextctl, a word a line.

void tests::fuzz(Bytes bytes) {
    simulator::WordList words;
    while (!bytes.isAtEnd())
        words.push_back(bytes.text());
    try {
        must(simulator::ctl::readCommandLine(words) != nullptr, "what is understood does nothing");
    } catch (const simulator::ctl::CommandFailure& failure) {
        const std::string_view what = failure.what();
        must(failure.code() == simulator::ctl::exitCode::notUnderstood, "reading fails as if it were doing");
        must(!what.empty() && what.find('\n') == std::string_view::npos, "a complaint is not one line");
    }
}
