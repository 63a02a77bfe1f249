#include "simulator/sysextctl/Help.h"

#include "simulator/core/Verbs.h"

#include <algorithm>
#include <cctype>

namespace simulator::ctl {

namespace {

constexpr auto opening = R"(usage: sysextctl VERB [ARGUMENTS]

Looks at and plays the simulated Mac on which applications activate their system extensions: the list of
extensions, the person who allows or denies, and the machine that restarts. ID is an extension's bundle
identifier, such as com.kelvra.ip-camera.cmio.
)";

constexpr auto closing = R"(
"sysextctl VERB --help" says more about a verb.

Five minutes: press Activate in the application; then
  sysextctl list                                  shows the new copy, waiting for the user
  sysextctl allow com.kelvra.ip-camera.cmio       is the press of Allow in System Settings
  sysextctl wait com.kelvra.ip-camera.cmio enabled
  sysextctl restart                               ends the application; what was deferred happens
  sysextctl reset                                 begins anew

Ends with 0 if it was done, 1 if it was not (nothing waits, not reached, no service), and 2 if the verb, a
state, an identifier or another argument is unknown; what went wrong is one line on standard error.
)";

std::string lineOf(const Command& command) {
    constexpr std::size_t columnWidth = 34;
    std::string call = usageOf(command.word, command.usage);
    call.resize(std::max(columnWidth, call.size()), ' ');
    return "  " + call + command.summary + "\n";
}

} // namespace

std::string help() {
    std::string text{opening};
    std::string head;
    for (const Command& command : commands()) {
        if (command.head != head) text += "\n" + command.head + "\n";
        head = command.head;
        text += lineOf(command);
    }
    return text + closing;
}

std::string help(const Command& command) {
    std::string summary = command.summary;
    summary.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(summary.front())));
    return "usage: sysextctl " + usageOf(command.word, command.usage) + "\n\n" + summary + ".\n" + command.details;
}

} // namespace simulator::ctl
