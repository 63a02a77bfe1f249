#include "simulator/scenario/Play.h"

#include "simulator/scenario/SampleApplication.h"
#include "simulator/scenario/Texts.h"

#include <algorithm>
#include <map>
#include <utility>

namespace simulator::scenario {

namespace {

std::string heardText(const std::optional<Heard>& heard) {
    if (!heard) return "nothing";
    return written(heard->body) + " to " + heard->request;
}

/// Takes the steps of a scenario. Whatever does not go as a step says is thrown as NotDone.
class Player {
public:
    explicit Player(Mac& mac) : mac_{mac} { put(sampleName, sampleApplication()); }

    void take(const Action& action) {
        std::visit([this](const auto& step) { play(step); }, action);
    }
    void checkEnd() { check(ExpectNothing{}); }

private:
    void play(const PutApplication& step) { put(step.name, step.bundle); }
    void play(const Carry& step);
    void play(const Update& step);
    void play(const Move& step);
    void play(const Damage& step);
    void play(const Ask& step) { mac_.ask(step); }
    void play(const AnswerQuestion& step) { mac_.answer(step); }
    void play(const Quit& step) { mac_.quit(step.application); }
    void play(const Deed& step) { mac_.perform(step); }
    void play(const Expectation& step) {
        std::visit([this](const auto& expected) { check(expected); }, step);
    }

    void check(const ExpectAnswer& expected);
    void check(const ExpectNothing& expected);
    void check(const ExpectCopy& expected);
    void check(const ExpectCopies& expected);
    void check(const ExpectRequests& expected);
    void check(const ExpectRequest& expected);

    void put(const std::string& name, BundleOnDisk bundle);

    Mac& mac_;
    std::map<std::string, BundleOnDisk> applications_;
};

// The disk -----------------------------------------------------------------------------------------------------------

void Player::put(const std::string& name, BundleOnDisk bundle) {
    mac_.put(name, bundle);
    applications_[name] = std::move(bundle);
}

void Player::play(const Carry& step) {
    BundleOnDisk bundle = applications_.at(step.application);
    carry(bundle, step);
    put(step.application, std::move(bundle));
}

void Player::play(const Update& step) {
    BundleOnDisk bundle = applications_.at(step.application);
    for (ExtensionOnDisk& extension : bundle.extensions) {
        extension.shortVersion = step.version.shortVersion;
        extension.version = step.version.version;
    }
    put(step.application, std::move(bundle));
}

void Player::play(const Move& step) {
    BundleOnDisk bundle = applications_.at(step.application);
    bundle.path = step.path;
    put(step.application, std::move(bundle));
}

void Player::play(const Damage& step) {
    BundleOnDisk bundle = applications_.at(step.application);
    const auto found =
        std::find_if(bundle.extensions.begin(), bundle.extensions.end(),
                     [&](const ExtensionOnDisk& extension) { return extension.fileName == step.fileName; });
    if (found == bundle.extensions.end()) throw NotDone{step.application + " carries no " + step.fileName};
    found->sealMatches = false;
    put(step.application, std::move(bundle));
}

// What is to be seen -------------------------------------------------------------------------------------------------

void Player::check(const ExpectAnswer& expected) {
    const auto heard = mac_.hear(expected.application);
    const bool isIt =
        heard && matches(expected.answer, heard->body) && (!expected.request || *expected.request == heard->request);
    if (!isIt) throw NotDone{expected.application + " heard " + heardText(heard)};
}

void Player::check(const ExpectNothing& expected) {
    for (const auto& [name, bundle] : applications_) {
        if (expected.application && *expected.application != name) continue;
        if (const auto heard = mac_.hear(name)) throw NotDone{name + " heard " + heardText(heard)};
    }
}

void Player::check(const ExpectCopy& expected) {
    const auto there = mac_.copies(expected.identifier);
    if (std::find(there.begin(), there.end(), expected.copy) != there.end()) return;
    throw NotDone{"the copies of " + expected.identifier + " are: " + written(there)};
}

void Player::check(const ExpectCopies& expected) {
    const auto there = mac_.copies(expected.identifier);
    if (there != expected.copies) throw NotDone{"the copies of " + expected.identifier + " are: " + written(there)};
}

void Player::check(const ExpectRequests& expected) {
    const auto there = mac_.requests();
    if (there.size() != expected.count) throw NotDone{"the open requests are: " + written(there)};
}

void Player::check(const ExpectRequest& expected) {
    const auto there = mac_.requests();
    const auto isIt = [&](const RequestThere& request) {
        return request.identifier == expected.identifier && request.stage == expected.stage;
    };
    if (std::none_of(there.begin(), there.end(), isIt)) throw NotDone{"the open requests are: " + written(there)};
}

} // namespace

std::optional<Mismatch> play(const Scenario& scenario, Mac& mac) {
    std::size_t line = scenario.steps.front().line;
    std::string text = "the sample application";
    try {
        Player player{mac};
        for (const Step& step : scenario.steps) {
            line = step.line;
            text = "\"" + step.text + "\"";
            player.take(step.action);
        }
        text = "no line expects what follows";
        player.checkEnd();
    } catch (const NotDone& problem) {
        return Mismatch{line, text + ": " + problem.what()};
    }
    return std::nullopt;
}

} // namespace simulator::scenario
