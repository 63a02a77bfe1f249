#include "tests/simulator/sample/RandomWalk.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace simulator {

namespace {

constexpr auto otherApplication = "/Applications/Other.app";

/// "2.1/2105: staging -> absent" without the version, "properties found 2" without the number.
std::string wayIn(const Event& event) {
    const auto colon = event.text.find(": ");
    if (colon != std::string::npos) return event.text.substr(colon + 2);
    const auto found = event.text.find(" found ");
    return found == std::string::npos ? event.text : event.text.substr(0, found + 6);
}

} // namespace

RandomWalk::RandomWalk(unsigned seed, Keeper& keeper) : random_{seed}, keeper_{keeper} {
    disk_.put(sampleBundle());
    BundleOnDisk other = otherBundle();
    other.extensions.pop_back();
    disk_.put(std::move(other));
    machine_ = std::make_unique<Machine>(State{}, disk_);
    keeper_.keep(machine_->state(), {});
}

void RandomWalk::go(int steps) {
    for (int step = 0; step < steps && !testing::Test::HasFailure(); ++step) {
        doSomething();
        hear();
        watch_.look(*machine_);
    }
}

// What is done -------------------------------------------------------------------------------------------------------

std::uint32_t RandomWalk::pick(std::uint32_t below) {
    return std::uniform_int_distribution<std::uint32_t>{0, below - 1}(random_);
}

std::string RandomWalk::anIdentifier() {
    static constexpr std::array identifiers{camera, driver, "com.example.unknown"};
    return identifiers.at(pick(3) == 0 ? pick(3) : pick(2));
}

std::string RandomWalk::aClient() {
    return "client" + std::to_string(pick(3));
}

std::string RandomWalk::anApplication() {
    if (pick(20) == 0) return {};
    return pick(8) == 0 ? otherApplication : sampleApplication;
}

void RandomWalk::doSomething() {
    switch (pick(16)) {
    case 0:
    case 1:
    case 2:
        return submit(RequestKind::activation);
    case 3:
    case 4:
        return submit(RequestKind::deactivation);
    case 5:
        return submit(RequestKind::properties);
    case 6:
        return answerAQuestion();
    case 7:
    case 8:
        return playThePerson();
    case 9:
        return rarely();
    case 10:
        return changeTheMachine();
    case 11:
        return orderAFault();
    default:
        machine_->step();
    }
}

/// Whether it can be done is the machine's affair.
void RandomWalk::playThePerson() {
    struct Deed {
        Verdict (Machine::*method)(const std::string&);
        std::optional<Cause> cause;
    };
    static constexpr std::array<Deed, 6> deeds{
        Deed{&Machine::allow, Cause::allowed},        Deed{&Machine::deny, Cause::denied},
        Deed{&Machine::authorize, Cause::authorized}, Deed{&Machine::refuse, Cause::refused},
        Deed{&Machine::disable, std::nullopt},        Deed{&Machine::enable, std::nullopt}};
    const Deed& deed = deeds[pick(deeds.size())];
    const std::string identifier = anIdentifier();
    const Verdict verdict = (machine_.get()->*deed.method)(identifier);
    if (verdict || !deed.cause) return;
    witness_.happened(*deed.cause, identifier);
    if (deed.cause == Cause::allowed) watch_.approved(identifier);
}

void RandomWalk::rarely() {
    switch (pick(12)) {
    case 0:
        return restart();
    case 1:
        machine_->reset();
        return witness_.happened(Cause::withdrawn);
    case 2:
        return comeBack();
    case 3:
    case 4:
        return leave();
    case 5:
        return uninstall();
    case 6:
        return install();
    case 7:
        return setVersion(disk_.at(sampleApplication), "2.1", std::to_string(2100 + pick(3)));
    case 8:
        disk_.at(sampleApplication).extensions[0].sealMatches = pick(3) != 0;
        return;
    default:
        EXPECT_EQ(machine_->advance(pick(5)), done);
    }
}

/// No answer comes out of the submission itself.
void RandomWalk::submit(RequestKind kind) {
    const Submission submission{aClient(), std::to_string(++lastName_), anApplication(), kind, anIdentifier()};
    if (!machine_->submit(submission)) witness_.submitted(submission, *machine_);
    const Outbox outbox = takeOutbox();
    for (const Answer& answer : outbox.answers) {
        EXPECT_NE(answer.token, submission.token);
        witness_.hear(answer, *machine_);
    }
}

void RandomWalk::answerAQuestion() {
    for (const auto& [number, request] : machine_->requests()) {
        if (request.stage != Stage::replacement) continue;
        const bool replaces = pick(4) != 0;
        const auto [client, token] = std::pair{request.client, request.token};
        witness_.happenedTo(client, token, replaces ? Cause::replaced : Cause::canceled);
        EXPECT_EQ(machine_->answerReplacement(client, token, replaces), done);
        return;
    }
}

void RandomWalk::changeTheMachine() {
    if (pick(4) == 0) return bringAProfile();
    if (pick(4) == 0) return machine_->setDeveloperMode(pick(2) == 0);
    moveASwitch();
}

void RandomWalk::bringAProfile() {
    Profile profile;
    if (pick(2) == 0) profile.allowedExtensions[sampleTeam] = {anIdentifier()};
    if (pick(2) == 0) profile.removableExtensions[sampleTeam] = {anIdentifier()};
    profile.allowsUserOverrides = pick(4) != 0;
    profile.source = "profile " + std::to_string(++lastName_);
    disk_.bring(profile);
    EXPECT_EQ(machine_->setProfile(profile.source), done);
    for (const auto* const identifier : {camera, driver}) {
        if (profile.allows(sampleTeam, identifier)) witness_.happened(Cause::allowed, identifier);
        if (profile.letsRemove(sampleTeam, identifier)) witness_.happened(Cause::authorized, identifier);
    }
}

void RandomWalk::moveASwitch() {
    const SwitchRow& row = switches[pick(static_cast<std::uint32_t>(switches.size()))];
    const std::string value{pick(2) == 0 ? row.byDefault : row.otherwise};
    machine_->setSwitch(row.which, value);
    if (row.which == Switch::authorization && value == "granted") witness_.happened(Cause::authorized);
}

void RandomWalk::orderAFault() {
    if (pick(4) != 0) return;
    Fault fault;
    fault.kind = faultKinds[pick(static_cast<std::uint32_t>(faultKinds.size()))].kind;
    if (pick(2) == 0) fault.request = RequestKind::activation;
    fault.failure = failureWith(1, "An internal error occurred.");
    fault.milliseconds = pick(5);
    (void)machine_->orderFault(fault);
}

void RandomWalk::install() {
    static constexpr std::array conditions{"enabled", "waiting", "disabled", "uninstalling"};
    const std::string identifier = anIdentifier();
    const std::string version = std::to_string(pick(3));
    const std::string condition = conditions.at(pick(conditions.size()));
    if (machine_->install(identifier, {"0", version}, condition)) return;
    witness_.happened(Cause::superseded, identifier);
    if (condition == "enabled" || condition == "disabled") watch_.approved(identifier);
}

void RandomWalk::uninstall() {
    const std::string identifier = anIdentifier();
    if (!machine_->uninstall("-", identifier)) witness_.happened(Cause::superseded, identifier);
}

void RandomWalk::leave() {
    const std::string client = aClient();
    machine_->clientLeft(client);
    witness_.clientLeft(client);
}

/// It leaves no copy that is on its way out, but where that is switched on.
void RandomWalk::restart() {
    machine_->restart();
    witness_.forgetAll();
    if (machine_->state().settings.valueOf(Switch::restart) == "lingers") return;
    for (const auto& [number, copy] : machine_->state().copies)
        EXPECT_FALSE(describe(copy.state).isUninstalling) << "it outlives a restart";
}

void RandomWalk::comeBack() {
    machine_ = std::make_unique<Machine>(keptState(), disk_);
    witness_.forgetAll();
}

// What is looked at --------------------------------------------------------------------------------------------------

State RandomWalk::keptState() {
    State state = keeper_.kept();
    state.settings.profile = std::get<Profile>(disk_.profileIn(state.settings.profile.source));
    return state;
}

/// Keeps what happened before anyone looks at it.
Outbox RandomWalk::takeOutbox() {
    Outbox outbox = machine_->takeOutbox();
    keeper_.keep(machine_->state(), outbox.copies);
    for (const Event& event : outbox.events)
        if (!event.identifier.empty() && event.text.rfind("fault ", 0) != 0) ways_.insert(wayIn(event));
    return outbox;
}

void RandomWalk::hear() {
    const Outbox outbox = takeOutbox();
    for (const Answer& answer : outbox.answers)
        witness_.hear(answer, *machine_);
    if (!outbox.answers.empty() && pick(100) == 0) {
        ++comparisons_;
        EXPECT_TRUE(keptState() == machine_->state()) << "what was answered is not kept";
    }
    if (outbox.crashed) comeBack();
}

} // namespace simulator
