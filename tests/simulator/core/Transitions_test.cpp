#include "simulator/core/CopyTransition.h"
#include "simulator/core/RequestTransition.h"
#include "simulator/core/Switch.h"
#include "tests/simulator/sample/Rows.h"

#include <set>
#include <string>

namespace simulator {
namespace {

std::string textOfSwitch(const SwitchRow& row) {
    return std::string{row.name} + ": " + std::string{row.byDefault} + ", or " + std::string{row.otherwise};
}

template <typename Table>
std::string linesOf(const Table& table) {
    std::string lines = "\n";
    for (const auto& row : table)
        lines += textOf(row) + "\n";
    return lines;
}

TEST(TheTableOfCopies, TakesACopyFromStateToStateAsARealMacDoes) {
    EXPECT_EQ(linesOf(copyTransitions), R"(
validating, accepted -> staging
validating, dropped -> gone
staging, approved -> activated enabled
staging, unapproved -> activated waiting for user
staging, dropped -> gone
activated waiting for user, allowed -> activated enabled
activated waiting for user, denied -> gone
activated waiting for user, replaced -> gone
activated waiting for user, deactivated -> terminating for uninstall
activated enabled, switched off -> activated disabled
activated enabled, replaced -> terminating for upgrade via delegate
activated enabled, deactivated -> terminating for uninstall
activated disabled, switched on -> activated enabled
activated disabled, replaced -> terminating for upgrade via delegate
activated disabled, deactivated -> terminating for uninstall
terminating for upgrade via delegate, stopped -> terminated waiting to uninstall on reboot
terminating for uninstall, stopped -> terminated waiting to uninstall on reboot
terminating for upgrade via delegate, restarted -> gone
terminated waiting to uninstall on reboot, restarted -> gone
)");
}

TEST(TheTableOfCopies, HasOneRowForAStateAndAnEvent) {
    std::set<std::pair<CopyState, CopyEvent>> seen;
    for (const CopyTransition& row : copyTransitions) {
        EXPECT_TRUE(seen.insert({row.from, row.event}).second);
        EXPECT_EQ(transitionOf(row.from, row.event), &row);
    }
}

TEST(TheTableOfCopies, LeavesNoDeadEndButByARestart) {
    for (const CopyStateRow& state : copyStates) {
        bool hasWayOut = false;
        for (const CopyTransition& row : copyTransitions)
            hasWayOut = hasWayOut || row.from == state.state;
        EXPECT_TRUE(hasWayOut) << state.text;
    }
}

TEST(TheTableOfCopies, EnablesOnlyWhatWasApprovedAllowedOrSwitchedOn) {
    for (const CopyTransition& row : copyTransitions) {
        if (row.to != CopyState::enabled) continue;
        EXPECT_TRUE(row.event == CopyEvent::approved || row.event == CopyEvent::allowed ||
                    row.event == CopyEvent::switchedOn);
    }
}

TEST(TheTableOfCopies, StandsInTheOrderOfItsStates) {
    for (std::size_t index = 0; index < copyStates.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(copyStates[index].state), index);
        EXPECT_EQ(copyStateWithText(copyStates[index].text), copyStates[index].state);
    }
}

constexpr auto rowsOfRequests = R"(
delayed, delay passed -> checking
checking, failed -> ended: failed
checking, hollow -> ended: finished 0
checking, already active -> ended: finished 0
checking, already waiting -> user: needs approval
checking, needs hidden prompt -> user
checking, is new -> validating
validating, failed -> ended: failed
validating, needs question -> replacement: asked for replacement
validating, needs no question -> staging
replacement, replace -> staging
replacement, cancel -> ended: failed 11
staging, failed -> ended: failed
staging, needs approval -> user: needs approval
staging, needs hidden prompt -> user
staging, activated -> ended: finished 0 or 1
user, activated -> ended: finished 0 or 1
user, denied -> ended: failed 11
user, denied unheard -> silent
checking, needs administrator -> authorization
checking, may remove -> removing
authorization, may remove -> removing
authorization, may not remove -> ended: failed 13 or 11
removing, removed -> ended: finished 0 or 1
checking, listed -> ended: found properties
checking, goes silent -> silent
delayed, superseded -> ended: failed 12
checking, superseded -> ended: failed 12
validating, superseded -> ended: failed 12
replacement, superseded -> ended: failed 12
staging, superseded -> ended: failed 12
user, superseded -> ended: failed 12
authorization, superseded -> ended: failed 12
removing, superseded -> ended: failed 12
delayed, withdrawn -> ended: failed 11
checking, withdrawn -> ended: failed 11
validating, withdrawn -> ended: failed 11
replacement, withdrawn -> ended: failed 11
staging, withdrawn -> ended: failed 11
user, withdrawn -> ended: failed 11
authorization, withdrawn -> ended: failed 11
removing, withdrawn -> ended: failed 11
silent, withdrawn -> ended
delayed, client left -> delayed
checking, client left -> checking
validating, client left -> validating
replacement, client left -> ended
staging, client left -> staging
user, client left -> ended
authorization, client left -> ended
removing, client left -> removing
silent, client left -> ended
)";

TEST(TheTableOfRequests, TakesARequestFromStageToStageAndAnswersAsARealMacDoes) {
    EXPECT_EQ(linesOf(requestTransitions), rowsOfRequests);
}

TEST(TheTableOfRequests, HasOneRowForAStageAndAnEvent) {
    std::set<std::pair<Stage, RequestEvent>> seen;
    for (const RequestTransition& row : requestTransitions) {
        EXPECT_TRUE(seen.insert({row.from, row.event}).second);
    }
}

TEST(TheTableOfRequests, HasNothingAfterTheEnd) {
    for (const RequestTransition& row : requestTransitions)
        EXPECT_NE(row.from, Stage::ended);
}

TEST(TheTableOfRequests, EndsWithEveryAnswerButQuestionAndApproval) {
    for (const RequestTransition& row : requestTransitions) {
        const bool isLast =
            row.reply != Reply::nothing && row.reply != Reply::replacementAsked && row.reply != Reply::needsApproval;
        if (isLast) {
            EXPECT_EQ(row.to, Stage::ended);
        }
        if (row.reply == Reply::replacementAsked) {
            EXPECT_EQ(row.to, Stage::replacement);
        }
        if (row.reply == Reply::needsApproval) {
            EXPECT_EQ(row.to, Stage::user);
        }
    }
}

TEST(TheTableOfRequests, SaysNothingToAClientThatLeft) {
    for (const RequestTransition& row : requestTransitions) {
        if (row.event == RequestEvent::clientLeft) {
            EXPECT_EQ(row.reply, Reply::nothing);
        }
    }
}

TEST(TheTableOfSwitches, HasWhatNoSourceSettlesWithTheUsualAnswerFirst) {
    std::string lines = "\n";
    for (const SwitchRow& row : switches)
        lines += textOfSwitch(row) + "\n";
    EXPECT_EQ(lines, R"(
authorization: asked, or granted
denial: error, or silence
driver: idle, or in-use
properties: empty, or error
refusal: 13, or 11
restart: clean, or lingers
second: supersedes, or fails
upgrade: approved, or asked
)");
}

TEST(TheTablesOfSwitchesAndFaults, StandInTheOrderOfTheirKinds) {
    for (std::size_t index = 0; index < switches.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(switches[index].which), index);
        EXPECT_EQ(switchNamed(switches[index].name), switches[index].which);
    }
    for (std::size_t index = 0; index < faultKinds.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(faultKinds[index].kind), index);
        EXPECT_EQ(faultKindNamed(faultKinds[index].name), faultKinds[index].kind);
    }
}

} // namespace
} // namespace simulator
