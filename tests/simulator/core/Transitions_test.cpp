#include "simulator/core/CopyTransition.h"
#include "simulator/core/RequestTransition.h"
#include "simulator/core/Switch.h"

#include <set>

namespace simulator {
namespace {

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

TEST(TheTableOfCopies, LetsARestartTakeAwayEveryCopyThatIsUninstalling) {
    for (const CopyStateRow& state : copyStates) {
        const CopyTransition* row = transitionOf(state.state, CopyEvent::restarted);
        if (state.isUninstalling) {
            ASSERT_NE(row, nullptr) << state.text;
            EXPECT_EQ(row->to, gone) << state.text;
        } else if (isInstalled(state.state)) {
            EXPECT_EQ(row, nullptr) << state.text;
        }
    }
}

TEST(TheTableOfCopies, StandsInTheOrderOfItsStates) {
    for (std::size_t index = 0; index < copyStates.size(); ++index) {
        EXPECT_EQ(static_cast<std::size_t>(copyStates[index].state), index);
        EXPECT_EQ(copyStateWithText(copyStates[index].text), copyStates[index].state);
    }
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
            row.reply == Reply::finished || row.reply == Reply::failed || row.reply == Reply::foundProperties;
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
