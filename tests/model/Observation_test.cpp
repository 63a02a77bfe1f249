#include "tests/model/ModelTest.h"

#include <functional>

namespace model {
namespace {

using platform::fake::awaitingCopy;
using platform::fake::copyOf;
using platform::fake::enabledCopy;
using platform::fake::uninstallingCopy;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Records the state of a model at each notification.
class ChangeRecorder {
public:
    struct Picture {
        DriverLoadingStateMachine::State state;
        std::vector<SysExtInfo> records;
        std::string lastError;
        std::size_t submissions;
    };

    explicit ChangeRecorder(DriverLoadingViewModel& model) : model_{model} {}
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    /// The state at each notification, which comes before the change.
    const std::vector<Picture>& pictures() const { return pictures_; }

    /// What changed between each notification and the next; "nothing" if an equal value was written.
    std::vector<std::string> changes() const {
        std::vector<std::string> all;
        for (std::size_t at = 0; at < pictures_.size(); ++at)
            all.push_back(difference(pictures_[at], at + 1 < pictures_.size() ? pictures_[at + 1] : picture()));
        return all;
    }

private:
    Picture picture() const {
        return {DriverLoadingViewModelTestAccess::state(model_), model_.sei(),
                DriverLoadingViewModelTestAccess::lastError(model_),
                platform::fake::SystemExtensions::shared().submissions().size()};
    }

    static std::string difference(const Picture& before, const Picture& after) {
        std::string text;
        if (before.state != after.state) text += std::string{" state "} + nameOf(after.state);
        for (std::size_t position = 0; position < before.records.size(); ++position)
            text += difference(std::to_string(position), before.records[position], after.records.at(position));
        return text.empty() ? "nothing" : text.substr(1);
    }

    static std::string difference(const std::string& position, const SysExtInfo& before, const SysExtInfo& after) {
        std::string text;
        const auto compare = [&](const char* name, const auto SysExtInfo::*field) {
            if (before.*field != after.*field) text += " " + position + "." + name;
        };
        compare("id", &SysExtInfo::id);
        compare("state", &SysExtInfo::state);
        compare("present", &SysExtInfo::present);
        compare("enabled", &SysExtInfo::enabled);
        compare("awaiting", &SysExtInfo::awaiting);
        compare("reboot", &SysExtInfo::reboot);
        compare("uninst", &SysExtInfo::uninst);
        compare("version", &SysExtInfo::version);
        compare("iconName", &SysExtInfo::iconName);
        compare("driverName", &SysExtInfo::driverName);
        compare("intversion", &SysExtInfo::intversion);
        return text;
    }

    DriverLoadingViewModel& model_;
    std::vector<Picture> pictures_;
    platform::Subscription subscription_{
        model_.objectWillChange().subscribe([this] { pictures_.push_back(picture()); })};
};

/// An outcome of an activation, the changes that observers see, and the error text stored by then.
struct Outcome {
    std::function<void()> say;
    std::vector<std::string> changes;
    const char* lastError = "An error has occured.";
};

class Observers : public ModelTest {
protected:
    /// The changes that an answer with these copies causes.
    std::vector<std::string> changesOf(Copies copies) {
        const ChangeRecorder recorder{*model};
        answer(std::move(copies));
        return recorder.changes();
    }
    void expect(const Outcome& outcome) {
        service().reset();
        model = DriverLoadingViewModel::create();
        model->activateExt(network);
        outcome.say();
        const ChangeRecorder recorder{*model};
        deliver();
        EXPECT_EQ(recorder.changes(), outcome.changes);
        for (const auto& picture : recorder.pictures()) {
            EXPECT_EQ(picture.submissions, 1U);
            EXPECT_EQ(picture.lastError, outcome.lastError);
        }
    }
};

TEST_F(Observers, AreNotifiedOnceAfterASubmissionAndBeforeTheChange) {
    const ChangeRecorder recorder{*model};
    model->activateExt(camera);
    model->deactivateExt(network);
    EXPECT_THAT(recorder.changes(), ElementsAre("state Activating", "state Blank"));
    EXPECT_EQ(recorder.pictures().front().submissions, 1U);
    EXPECT_EQ(recorder.pictures().front().state, State::blank);
    EXPECT_EQ(recorder.pictures().back().submissions, 2U);
    EXPECT_EQ(recorder.pictures().back().state, State::activating);
}

TEST_F(Observers, AreNotifiedOfAnEqualState) {
    model->activateExt(camera);
    const ChangeRecorder recorder{*model};
    model->activateExt(camera);
    EXPECT_THAT(recorder.changes(), ElementsAre("nothing"));
}

TEST_F(Observers, AreNotifiedOfEachOutcomeAfterTheErrorTextIsStoredAndBeforeTheQueries) {
    const Outcome outcomes[]{
        {[this] {
             setState(State::activated);
             service().askReplacement(0, copyOf(network, "1", "1"), copyOf(network, "2", "2"));
         },
         {"state Activating"}},
        {[] { service().needsApproval(0); }, {"state NeedsApproval"}},
        {[] { service().finish(0, Result::completed); }, {"state Activated"}},
        {[] { service().finish(0, Result::willCompleteAfterReboot); }, {"state ActivatedUponReboot", "1.reboot"}},
        {[] { service().finish(0, Result{2}); }, {"state RequestError"}, "Request completed."},
        {[] { service().fail(0, 10, ""); }, {"state RequestError"}, "Activation forbidden by system policy."},
        {[] {
             service().fail(0, {"NSPOSIXErrorDomain", 12, ""});
         },
         {}},
    };
    for (const Outcome& outcome : outcomes)
        expect(outcome);
}

TEST_F(Observers, AreNotifiedOfTheMarkEvenIfItIsSetAlready) {
    finish(Result::willCompleteAfterReboot);
    model->activateExt(network);
    setState(State::activatedUponReboot);
    service().finish(service().latest(Kind::activation, network), Result::willCompleteAfterReboot);
    const ChangeRecorder recorder{*model};
    deliver();
    EXPECT_THAT(recorder.changes(), ElementsAre("nothing", "nothing"));
}

TEST_F(Observers, AreNotNotifiedOfAnIgnoredAnswer) {
    EXPECT_THAT(changesOf({}), IsEmpty());
    EXPECT_THAT(changesOf({enabledCopy("com.kelvra.unknown", "1", "1"), enabledCopy(camera, "1", "1")}), IsEmpty());
}

TEST_F(Observers, AreNotifiedOfAnAnswerOncePerFieldInOrder) {
    answer({awaitingCopy(camera, "1", "1"), uninstallingCopy(camera, "1", "1")});
    EXPECT_THAT(changesOf({enabledCopy(camera, "1.2", "345")}),
                ElementsAre("nothing", // present is true already
                            "1.enabled", "1.version", "1.intversion", "1.awaiting", "1.uninst", "1.state"));
}

TEST_F(Observers, AreNotifiedEquallyOftenIfNoValueChanges) {
    EXPECT_THAT(changesOf({enabledCopy(camera, "1.2", "345")}),
                ElementsAre("1.present", "1.enabled", "1.version", "1.intversion", "nothing", "nothing", "1.state"));
    const auto changes = changesOf({enabledCopy(camera, "1.2", "345")});
    EXPECT_THAT(changes, SizeIs(7));
    EXPECT_THAT(changes, Each("nothing"));
}

TEST_F(Observers, AreNotNotifiedOfAnIntegerThatDoesNotConvert) {
    EXPECT_THAT(changesOf({enabledCopy(camera, "1.2", "3.4.5")}),
                ElementsAre("1.present", "1.enabled", "1.version", "nothing", "nothing", "1.state"));
}

TEST_F(Observers, AreNotifiedOfEachMatchingCopyAndSeeAFlagClearedOnlyAfterTheLast) {
    answer({enabledCopy(camera, "1", "1")});
    EXPECT_THAT(changesOf({awaitingCopy(camera, "2", "2"), enabledCopy(base, "9", "9"), copyOf(camera, "3", "3")}),
                ElementsAre("nothing", "1.awaiting", // the awaiting copy: present, awaiting
                            "nothing",               // the other copy: present
                            "1.enabled", "nothing", "1.state"));
}

TEST_F(Observers, SeeTheEarlierVersionsOfAnAnswerBriefly) {
    const ChangeRecorder recorder{*model};
    answer({enabledCopy(camera, "1", "1"), enabledCopy(camera, "2", "2")});
    EXPECT_EQ(recorder.pictures().back().records[cameraPosition].version, "2/2");
    EXPECT_THAT(recorder.changes(),
                ElementsAre("1.present", "1.enabled", "1.version", "1.intversion", "nothing", "nothing", "1.version",
                            "1.intversion", "nothing", "nothing", "1.state"));
}

TEST_F(Observers, AreNotifiedOfAllChangesBeforeTheLineIsPrinted) {
    std::vector<std::size_t> printed;
    const auto subscription =
        model->objectWillChange().subscribe([&] { printed.push_back(platform::fake::printedLines().size()); });
    answer({enabledCopy(camera, "1", "1")});
    EXPECT_THAT(printed, Each(0U));
    EXPECT_EQ(platform::fake::printedLines().size(), 1U);
}

TEST_F(Observers, NeverSeeTheRecordsCopied) {
    answer({enabledCopy(base, std::string(1000, '1'), "1")});
    const auto* const list = model->sei().data();
    const auto* const longText = record(basePosition).version.data();
    bool inPlace = true;
    const auto subscription = model->objectWillChange().subscribe(
        [&] { inPlace = inPlace && model->sei().data() == list && record(basePosition).version.data() == longText; });
    answer(Copies(100, enabledCopy(camera, "2.1", "2105")));
    EXPECT_TRUE(inPlace);
    EXPECT_EQ(model->sei().data(), list);
    EXPECT_EQ(record(basePosition).version.data(), longText);
}

TEST_F(Observers, CanStartAQueryInsideANotification) {
    const auto subscription = model->objectWillChange().subscribe([this] { model->enumerate(); });
    model->activateExt(camera);
    EXPECT_EQ(submittedSince(1), enumeration());
    EXPECT_EQ(state(), State::activating);
}

} // namespace
} // namespace model
