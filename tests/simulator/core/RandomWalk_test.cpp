#include "tests/simulator/sample/SampleMac.h"

#include <map>
#include <random>
#include <set>

namespace simulator {
namespace {

/// Does a hundred thousand random things to a machine, and after each looks whether its promises hold.
class RandomWalk {
public:
    explicit RandomWalk(unsigned seed) : random_{seed} {
        disk_.put(sampleBundle());
        machine_ = std::make_unique<Machine>(State{}, disk_);
    }

    void go(int steps) {
        for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
            doSomething();
            look(machine_->takeOutbox());
            lookAtCopies();
        }
    }

    std::size_t answers() const { return answers_; }

private:
    std::uint32_t pick(std::uint32_t below) {
        return std::uniform_int_distribution<std::uint32_t>{0, below - 1}(random_);
    }
    std::string anIdentifier() {
        static const std::vector<std::string> identifiers{camera, driver, "com.example.unknown"};
        return identifiers[pick(3) == 0 ? pick(3) : pick(2)];
    }
    std::string aClient() { return "client" + std::to_string(pick(3)); }

    void doSomething() {
        switch (pick(16)) {
        case 0:
        case 1:
        case 2:
            submit(RequestKind::activation);
            break;
        case 3:
        case 4:
            submit(RequestKind::deactivation);
            break;
        case 5:
            submit(RequestKind::properties);
            break;
        case 6:
            answerAQuestion();
            break;
        case 7:
        case 8:
            playThePerson();
            break;
        case 9:
            rarely();
            break;
        case 10:
            changeTheMachine();
            break;
        case 11:
            orderAFault();
            break;
        default:
            machine_->step();
            break;
        }
    }

    /// Whether it can be done is the machine's affair.
    void playThePerson() {
        using Deed = Verdict (Machine::*)(const std::string&);
        static constexpr std::array<Deed, 6> deeds{&Machine::allow,  &Machine::deny,    &Machine::authorize,
                                                   &Machine::refuse, &Machine::disable, &Machine::enable};
        (void)(machine_.get()->*deeds[pick(6)])(anIdentifier());
    }

    void rarely() {
        switch (pick(12)) {
        case 0:
            restart();
            break;
        case 1:
            machine_->reset();
            break;
        case 2:
            comeBack();
            break;
        case 3:
        case 4:
            leave(aClient());
            break;
        case 5:
            (void)machine_->uninstall("-", anIdentifier());
            break;
        case 6:
            (void)machine_->install(anIdentifier(), {"0", std::to_string(pick(3))}, aCondition());
            break;
        case 7:
            setVersion(disk_.at(sampleApplication), "2.1", std::to_string(2100 + pick(3)));
            break;
        case 8:
            disk_.at(sampleApplication).extensions[0].sealMatches = pick(3) != 0;
            break;
        default:
            (void)machine_->advance(pick(5));
            break;
        }
    }

    std::string aCondition() {
        static const std::vector<std::string> conditions{"enabled", "waiting", "disabled", "uninstalling"};
        return conditions[pick(4)];
    }

    void submit(RequestKind kind) {
        const std::string client = aClient();
        const std::string token = std::to_string(++lastToken_);
        const std::string application = pick(20) == 0 ? "" : sampleApplication;
        if (!machine_->submit({client, token, application, kind, anIdentifier()})) open_[{client, token}] = kind;
    }

    void answerAQuestion() {
        for (const auto& [number, request] : std::map{machine_->requests()}) {
            if (request.stage != Stage::replacement) continue;
            EXPECT_EQ(machine_->answerReplacement(request.client, request.token, pick(4) != 0), done);
            return;
        }
    }

    void changeTheMachine() {
        if (pick(4) == 0) {
            Profile profile;
            if (pick(2) == 0) profile.allowedExtensions[sampleTeam] = {anIdentifier()};
            if (pick(2) == 0) profile.removableExtensions[sampleTeam] = {anIdentifier()};
            profile.allowsUserOverrides = pick(4) != 0;
            machine_->setProfile(profile);
            return;
        }
        if (pick(4) == 0) machine_->setDeveloperMode(pick(2) == 0);
        const SwitchRow& row = switches[pick(static_cast<std::uint32_t>(switches.size()))];
        const std::string value{pick(2) == 0 ? row.byDefault : row.otherwise};
        EXPECT_EQ(machine_->setSwitch(std::string{row.name}, value), done);
    }

    void orderAFault() {
        if (pick(4) != 0) return;
        Fault fault;
        fault.kind = faultKinds[pick(static_cast<std::uint32_t>(faultKinds.size()))].kind;
        if (pick(2) == 0) fault.request = RequestKind::activation;
        fault.failure = failureWith(1);
        fault.milliseconds = pick(5);
        (void)machine_->orderFault(fault);
    }

    void leave(const std::string& client) {
        machine_->clientLeft(client);
        for (auto entry = open_.begin(); entry != open_.end();) {
            entry = entry->first.first == client ? open_.erase(entry) : std::next(entry);
        }
    }

    void restart() {
        machine_->restart();
        open_.clear();
        std::map<std::string, int> terminated;
        for (const auto& [number, copy] : machine_->state().copies) {
            if (describe(copy.state).isUninstalling) ++terminated[copy.extension.identifier];
        }
        const bool lingers = !machine_->state().settings.isDefault(Switch::restart);
        for (const auto& [identifier, count] : terminated)
            EXPECT_LE(count, lingers ? 1 : 0);
    }

    void comeBack() {
        State kept = machine_->state();
        machine_ = std::make_unique<Machine>(std::move(kept), disk_);
        open_.clear();
    }

    void look(const Outbox& outbox) {
        for (const Answer& answer : outbox.answers) {
            ++answers_;
            const auto open = open_.find({answer.client, answer.token});
            ASSERT_NE(open, open_.end()) << "an answer to a request that had ended or was never asked";
            lookAtAnswer(answer, open->second);
            const bool isLast = !std::holds_alternative<NeedsApproval>(answer.body) &&
                                !std::holds_alternative<ReplacementAsked>(answer.body);
            if (isLast) open_.erase(open);
        }
        if (outbox.crashed) comeBack();
    }

    void lookAtAnswer(const Answer& answer, RequestKind kind) {
        if (std::holds_alternative<FoundProperties>(answer.body)) {
            EXPECT_EQ(kind, RequestKind::properties);
        }
        if (std::holds_alternative<Finished>(answer.body)) {
            EXPECT_NE(kind, RequestKind::properties);
        }
        if (std::holds_alternative<NeedsApproval>(answer.body)) {
            EXPECT_EQ(kind, RequestKind::activation);
        }
        if (std::holds_alternative<ReplacementAsked>(answer.body)) {
            EXPECT_EQ(kind, RequestKind::activation);
        }
    }

    void lookAtCopies() {
        std::map<std::string, int> activated;
        std::map<std::string, int> waiting;
        std::map<std::string, int> unfinished;
        for (const auto& [number, copy] : machine_->state().copies) {
            const std::string& identifier = copy.extension.identifier;
            EXPECT_EQ(number, copy.number);
            if (isActivated(copy.state)) {
                EXPECT_EQ(++activated[identifier], 1);
            }
            if (copy.state == CopyState::waitingForUser) {
                EXPECT_EQ(++waiting[identifier], 1);
            }
            if (describe(copy.state).condition == "preparing") {
                EXPECT_EQ(++unfinished[identifier], 1);
            }
        }
        for (const auto& [number, request] : machine_->requests()) {
            if (request.stage != Stage::user) continue;
            const auto copy = machine_->state().copies.find(request.copy);
            ASSERT_NE(copy, machine_->state().copies.end());
            EXPECT_EQ(copy->second.state, CopyState::waitingForUser);
        }
        lookForOrphans(unfinished);
    }

    /// A copy that is being prepared has a request that prepares it.
    void lookForOrphans(const std::map<std::string, int>& unfinished) {
        for (const auto& [identifier, count] : unfinished) {
            bool isPrepared = false;
            for (const auto& [number, request] : machine_->requests()) {
                isPrepared = isPrepared || (request.identifier == identifier && request.copy != 0);
            }
            EXPECT_TRUE(isPrepared) << identifier;
        }
    }

    std::mt19937 random_;
    FakeDisk disk_;
    std::unique_ptr<Machine> machine_;
    std::map<std::pair<std::string, std::string>, RequestKind> open_;
    int lastToken_ = 0;
    std::size_t answers_ = 0;
};

class ARandomWalk : public testing::TestWithParam<unsigned> {};

TEST_P(ARandomWalk, OfAHundredThousandStepsBreaksNoPromise) {
    RandomWalk walk{GetParam()};
    walk.go(100000);
    EXPECT_GT(walk.answers(), 10000U);
}

INSTANTIATE_TEST_SUITE_P(WithSeed, ARandomWalk, testing::Values(1U, 2U, 3U));

} // namespace
} // namespace simulator
