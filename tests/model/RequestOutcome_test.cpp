#include "model/DriverLoadingViewModel.h"
#include "tests/model/ModelTest.h"

#include <csignal>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>

namespace model {
namespace {

using platform::OSSystemExtensionReplacementAction;
using platform::fake::copyOf;
using platform::fake::enabledCopy;
using platform::fake::loggedLines;
using testing::ElementsAre;

class TheReplacementQuestion : public ModelTest {
protected:
    void ask() {
        model->activateExt(camera);
        service().askReplacement(service().latest(Kind::activation, camera), copyOf(camera, "2.0", "2000"),
                                 copyOf(camera, "2.1", "2105"));
    }
};

class TheApprovalNotice : public ModelTest {};
class TheFinishNotice : public ModelTest {};
class TheFailureNotice : public ModelTest {};
class TheOutcomes : public ModelTest {};

TEST_F(TheReplacementQuestion, IsAnsweredWithReplaceEvenForAnOlderBuild) {
    ask();
    service().askReplacement(0, copyOf(camera, "2.1", "2105"), copyOf(camera, "2.0", "2000"));
    deliver();
    EXPECT_THAT(service().replacementAnswers(), testing::Each(OSSystemExtensionReplacementAction::replace));
    EXPECT_EQ(service().replacementAnswers().size(), 2U);
}

TEST_F(TheReplacementQuestion, LogsTheDescriptionsOfBothBuildsTheInstalledOneFirst) {
    ask();
    deliver();
    EXPECT_THAT(loggedLines(), ElementsAre("Sysex identifier com.kelvra.ip-camera.cmio",
                                           "Sysex replacement request: <com.kelvra.ip-camera.cmio 2.0/2000> "
                                           "<com.kelvra.ip-camera.cmio 2.1/2105>"));
}

TEST_F(TheReplacementQuestion, ChangesNoRecordAndAsksForNoProperties) {
    ask();
    deliver();
    EXPECT_EQ(texts(), initialTexts());
    EXPECT_EQ(service().submissions().size(), 1U);
    EXPECT_EQ(lastError(), "An error has occured.");
}

TEST_F(TheApprovalNotice, IsLoggedAndAsksForPropertiesAndChangesNoRecordByItself) {
    model->activateExt(camera);
    service().needsApproval(0);
    deliver();
    EXPECT_THAT(loggedLines(),
                ElementsAre("Sysex identifier com.kelvra.ip-camera.cmio", "Sysex request needs user approval."));
    EXPECT_EQ(submittedSince(1), enumeration());
    EXPECT_EQ(texts(), initialTexts());
}

TEST_F(TheFinishNotice, IsLoggedWithItsResultAndAsksForProperties) {
    finish(Result::completed);
    EXPECT_EQ(submittedSince(1), enumeration());
    finish(Result::willCompleteAfterReboot);
    finish(Result{-3});
    EXPECT_THAT(loggedLines(), ElementsAre(testing::_, "Sysex request finished: 0", testing::_,
                                           "Sysex request finished: 1", testing::_, "Sysex request finished: -3"));
}

TEST_F(TheFinishNotice, OfTheNetworkDriverAfterRebootMarksTheCameraAloneAndAsksForProperties) {
    finish(Result::willCompleteAfterReboot);
    EXPECT_THAT(texts(), ElementsAre(initialBase,
                                     "com.kelvra.ip-camera.cmio 'Not installed' reboot 'n/a' VideoCamera "
                                     "'Camera Driver' 0",
                                     initialNetwork));
    EXPECT_EQ(state(), State::activatedUponReboot);
    EXPECT_EQ(submittedSince(1), enumeration());
}

TEST_F(TheFinishNotice, OfADeactivationAfterRebootMarksTheCameraToo) {
    model->deactivateExt(network);
    service().finish(0, Result::willCompleteAfterReboot);
    deliver();
    EXPECT_TRUE(record(cameraPosition).reboot);
    EXPECT_EQ(state(), State::blank);
}

TEST_F(TheFinishNotice, AfterRebootMarksTheRecordAtPositionOneWhicheverItIs) {
    setRecords({recordOf(camera), recordOf(base)});
    finish(Result::willCompleteAfterReboot);
    EXPECT_FALSE(record(0).reboot);
    EXPECT_TRUE(record(1).reboot);
}

TEST_F(TheFinishNotice, WithAnyOtherResultStoresRequestCompletedAndAsksForProperties) {
    for (const auto value :
         std::vector<std::int64_t>{2, -1, 3, 256, 4'294'967'296, std::numeric_limits<std::int64_t>::min(),
                                   std::numeric_limits<std::int64_t>::max()}) {
        fail(1, "");
        const auto submitted = service().submissions().size();
        finish(Result{value});
        EXPECT_EQ(lastError(), "Request completed.") << value;
        EXPECT_EQ(state(), State::requestError) << value;
        EXPECT_EQ(texts(), initialTexts()) << value;
        EXPECT_EQ(submittedSince(submitted + 1), enumeration()) << value;
        EXPECT_EQ(loggedLines().back(), "Sysex request finished: " + std::to_string(value));
    }
}

TEST_F(TheFailureNotice, StoresTheMessageOfItsCode) {
    const std::vector<std::pair<std::int64_t, std::string>> meanings{
        {1, "An unknown error occurred."},
        {2, "Missing a required entitlement."},
        {3, "Unsupported parent bundle location."},
        {4, "Extension not found."},
        {5, "Missing extension identifier."},
        {6, "Duplicate extension identifier."},
        {7, "Unknown extension category."},
        {8, "System extension signature is invalid."},
        {9, "System extension validation failed."},
        {10, "Activation forbidden by system policy."},
        {11, "Request was canceled."},
        {12, "Superseded by request for same identifier."},
        {13, "Authorization required."},
    };
    for (const auto& [code, text] : meanings) {
        fail(code, "Odd.");
        EXPECT_EQ(lastError(), text) << code;
        EXPECT_EQ(loggedLines().back(), "Sysex request failed: Odd. (" + text + ")");
    }
}

TEST_F(TheFailureNotice, StoresUnexpectedErrorForAnUnknownCode) {
    for (const std::int64_t code :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{14}, std::int64_t{4'294'967'297},
          std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        finish(Result{2});
        fail(code, "");
        EXPECT_EQ(lastError(), "Unexpected error.") << code;
    }
}

TEST_F(TheFailureNotice, NeverReadsADescriptionAsAFormat) {
    fail(4, "%d %@");
    EXPECT_EQ(loggedLines().back(), "Sysex request failed: %d %@ (Extension not found.)");
}

TEST_F(TheFailureNotice, AsksForNoPropertiesAndKeepsTheRecords) {
    answer({enabledCopy(network, "2.1", "2105")});
    const auto before = texts();
    const auto submitted = service().submissions().size();
    fail(9, "");
    EXPECT_EQ(texts(), before);
    EXPECT_EQ(submittedSince(submitted), (Submissions{{Kind::activation, network}}));
}

TEST_F(TheFailureNotice, OfAPropertiesRequestCountsLikeAnyOther) {
    model->enumerate();
    service().fail(0, 1, "The service is gone.");
    deliver();
    EXPECT_THAT(loggedLines(), ElementsAre("Sysex request failed: The service is gone. (An unknown error occurred.)"));
    EXPECT_EQ(state(), State::requestError);
    EXPECT_EQ(service().submissions().size(), 3U);
}

TEST_F(TheFailureNotice, OfAnotherDomainChangesNothingAtAll) {
    model->activateExt(network);
    for (const auto* const domain : {"NSCocoaErrorDomain", "", "OSSystemExtensionError",
                                     "OSSystemExtensionErrorDomain ", "ossystemextensionerrordomain"}) {
        const auto logged = loggedLines(); // NOLINT(performance-unnecessary-copy-initialization): it grows
        const auto request = service().request(0);
        model->requestDidFailWithError(*request, {domain, 12, "Foreign."});
        EXPECT_EQ(loggedLines(), logged) << domain;
        EXPECT_EQ(lastError(), "An error has occured.") << domain;
        EXPECT_EQ(state(), State::activating) << domain;
        EXPECT_EQ(texts(), initialTexts()) << domain;
        EXPECT_EQ(service().submissions().size(), 1U) << domain;
    }
}

TEST_F(TheOutcomes, MoveEveryStateAsTheTransitionsSay) {
    using Cause = std::function<void(std::size_t request)>;
    const std::vector<std::pair<LoadingTrigger, Cause>> causes{
        {LoadingTrigger::activate,
         [&](auto request) { service().askReplacement(request, copyOf(camera, "1", "1"), copyOf(camera, "2", "2")); }},
        {LoadingTrigger::needsApproval, [&](auto request) { service().needsApproval(request); }},
        {LoadingTrigger::completed, [&](auto request) { service().finish(request, Result::completed); }},
        {LoadingTrigger::afterReboot,
         [&](auto request) { service().finish(request, Result::willCompleteAfterReboot); }},
        {LoadingTrigger::failed, [&](auto request) { service().finish(request, Result{2}); }},
        {LoadingTrigger::failed, [&](auto request) { service().fail(request, 8, ""); }},
    };
    for (const auto& [trigger, cause] : causes) {
        for (const auto each : allStates) {
            model->activateExt(camera);
            cause(service().latest(Kind::activation, camera));
            setState(each);
            deliver();
            EXPECT_EQ(state(), next(each, trigger)) << nameOf(each);
        }
    }
}

TEST_F(TheOutcomes, KeepTheLatestErrorTextUntilTheNextError) {
    fail(7, "");
    finish(Result::completed);
    finish(Result::willCompleteAfterReboot);
    EXPECT_EQ(lastError(), "Unknown extension category.");
}

TEST_F(TheOutcomes, NeverChangeTheModelsNeedForAReboot) {
    finish(Result::willCompleteAfterReboot);
    EXPECT_FALSE(model->need_reboot());
    finish(Result::completed);
    finish(Result{2});
    fail(12, "");
    answer({enabledCopy(camera, "2.1", "2105")});
    EXPECT_FALSE(model->need_reboot());
}

TEST_F(TheOutcomes, NeverClearTheCamerasMark) {
    finish(Result::willCompleteAfterReboot);
    finish(Result::completed);
    fail(12, "");
    answer({enabledCopy(camera, "2.1", "2105")});
    answer({});
    EXPECT_TRUE(record(cameraPosition).reboot);
}

TEST_F(TheOutcomes, OfTwoQueriesAreAppliedAsTheyArriveAndTheLastOneStays) {
    model->enumerate();
    model->enumerate();
    service().foundProperties(4, {enabledCopy(camera, "2.1", "2105")});
    service().foundProperties(1, {platform::fake::awaitingCopy(camera, "2.0", "2000")});
    service().foundProperties(5, {});
    service().foundProperties(3, {enabledCopy(base, "2.1", "2105")});
    service().foundProperties(0, {});
    deliver();
    EXPECT_EQ(record(basePosition).state, "Enabled");
    EXPECT_EQ(record(cameraPosition).state, "Await approval");
    EXPECT_EQ(text(networkPosition), initialNetwork);
}

class AListTooShortForTheCameraDeathTest : public ModelTest {};

TEST_F(AListTooShortForTheCameraDeathTest, StopsAtAFinishAfterReboot) {
    for (const std::size_t length : {0U, 1U}) {
        setRecords(std::vector(length, recordOf(camera)));
        const auto line = "Fatal error: Index 1 out of range of " + std::to_string(length) + " extension records\n";
        EXPECT_EXIT(finish(Result::willCompleteAfterReboot), testing::KilledBySignal(SIGABRT), testing::Eq(line));
    }
}

} // namespace
} // namespace model
