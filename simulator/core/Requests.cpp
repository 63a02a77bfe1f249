// The requests of applications: how they begin, are answered, and end.

#include "simulator/core/Machine.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

/// An answer as "sysextctl watch" shows it, which is shorter than textOf().
struct TextOfBody {
    std::string operator()(const auto& body) const { return textOf(body); }
    std::string operator()(const ReplacementAsked&) const { return "asked for replacement"; }
    std::string operator()(const Failure& failure) const { return "failed " + std::to_string(failure.code); }
    std::string operator()(const FoundProperties& found) const {
        return "found " + std::to_string(found.copies.size());
    }
};

} // namespace

Request* Machine::find(const Condition& condition) {
    for (auto& [number, request] : requests_)
        if (request.stage != Stage::ended && condition(request)) return &request;
    return nullptr;
}

/// The activation or deactivation of an extension that is not answered yet.
Request* Machine::pending(const std::string& identifier) {
    return find([&](const Request& request) {
        return request.kind != RequestKind::properties && request.stage != Stage::silent && !request.isForeign &&
               request.identifier == identifier;
    });
}

/// The deactivation that waits for an administrator.
Request* Machine::asked(const std::string& identifier) {
    return find([&](const Request& request) {
        return request.stage == Stage::authorization && request.identifier == identifier;
    });
}

/// The activation that waits for the user to approve this copy.
Request* Machine::waitingFor(const Copy& copy) {
    return find([&](const Request& request) { return request.stage == Stage::user && request.copy == copy.number; });
}

void Machine::goOn(Request& request, Stage to) {
    request.stage = to;
    request.turn = ++lastTurn_;
    outbox_.moved = true;
}

/// If the application is gone, the request ends instead.
void Machine::wait(Request& request, Stage stage) {
    goOn(request, stage);
    if (request.client.empty()) end(request);
}

/// Sends an answer to the application, if it still runs.
void Machine::say(const Request& request, AnswerBody body) {
    if (std::holds_alternative<std::monostate>(body)) return;
    tell(request.identifier, std::string{nameOf(request.kind)} + " " + std::visit(TextOfBody{}, body),
         request.application);
    if (!request.client.empty()) outbox_.answers.push_back({request.client, request.token, std::move(body)});
}

/// This is the last answer. A copy that is still being prepared is dropped.
void Machine::end(Request& request, AnswerBody body) {
    say(request, std::move(body));
    const auto copy = state_.copies.find(request.copy);
    if (copy != state_.copies.end() &&
        (copy->second.state == CopyState::validating || copy->second.state == CopyState::staging))
        drop(request.copy);
    if (request.stage == Stage::removing) endRemoval(request.identifier);
    goOn(request, Stage::ended);
}

/// Older requests for the extension fail with 12.
void Machine::supersede(const std::string& identifier) {
    constexpr std::string_view laterDescription = "A later request for the same extension replaced this one.";
    while (Request* const older = pending(identifier))
        end(*older, failureWith(code::requestSuperseded, laterDescription));
}

// What an application does -------------------------------------------------------------------------------------------

Verdict Machine::submit(const Submission& submission) {
    forgetEnded();
    if (auto refusal = refusalOf(submission)) return refusal;
    Request request{submission};
    request.number = ++state_.lastNumber;
    request.since = request.due = state_.clock;
    request.isForeign = isForeign(request);
    if (!request.isForeign) {
        suffer(request);
        giveWay(request);
    }
    if (!request.application.empty() && state_.applications.size() < limits::applications)
        state_.applications.insert(request.application);
    request.turn = ++lastTurn_;
    tell(request.identifier, std::string{nameOf(request.kind)} + " submitted", request.application);
    if (request.fault) tell(request.identifier, "fault used up: " + textOf(*request.fault), request.application);
    requests_.emplace(request.number, std::move(request));
    return done;
}

Verdict Machine::refusalOf(const Submission& submission) {
    const auto isOfClient = [&](const auto& entry) { return entry.second.client == submission.client; };
    const auto count = std::count_if(requests_.begin(), requests_.end(), isOfClient);
    if (submission.token.empty() || !isPlain(submission.token, limits::token)) return invalid("the token is malformed");
    if (!isPlain(submission.identifier, limits::identifier)) return invalid("the identifier is malformed");
    if (find([&](const Request& open) { return open.client == submission.client && open.token == submission.token; }))
        return invalid("the token is in use by an open request");
    if (static_cast<std::size_t>(count) >= limits::requestsOfClient || requests_.size() >= limits::requests)
        return tooMany("too many requests are open");
    return done;
}

/// The request uses up the oldest fault that was ordered for one like it.
void Machine::suffer(Request& request) {
    const auto ordered = std::find_if(state_.faults.begin(), state_.faults.end(),
                                      [&](const auto& entry) { return befalls(entry.second, request.kind); });
    if (ordered == state_.faults.end()) return;
    request.fault = ordered->second;
    state_.faults.erase(ordered);
    if (request.isBefallenBy(Fault::Kind::error)) request.doomed = request.fault->failure;
    if (!request.isBefallenBy(Fault::Kind::delay)) return;
    request.stage = Stage::delayed;
    request.due += request.fault->milliseconds;
}

/// Of two activations or deactivations of an extension, the older one fails, or the newer one: see the switch "second".
void Machine::giveWay(Request& request) {
    if (request.kind == RequestKind::properties || !pending(request.identifier)) return;
    if (isDefault(Switch::second))
        supersede(request.identifier);
    else
        request.doomed =
            failureWith(code::requestSuperseded, "An earlier request for the same extension is still open.");
}

/// Stages the new copy, or fails the request with 11.
Verdict Machine::answerReplacement(const std::string& client, const std::string& token, bool replace) {
    Request* const request = find([&](const Request& open) {
        return open.client == client && open.token == token && open.stage == Stage::replacement;
    });
    if (!request) return invalid("no such question is open");
    if (replace) {
        put(state_.copies.at(request->copy), CopyState::staging);
        goOn(*request, Stage::staging);
    } else {
        end(*request, requestCanceled());
    }
    return done;
}

void Machine::sealChecked(std::int64_t number, bool matches) {
    const auto request = requests_.find(number);
    if (request == requests_.end() || !std::exchange(request->second.awaitsSeal, false)) return;
    request->second.sealMatches = matches;
}

/// The service finishes the current work of a request, but sends no answer.
void Machine::clientLeft(const std::string& client) {
    for (auto& [number, request] : requests_) {
        if (request.client != client || request.stage == Stage::ended) continue;
        request.client.clear();
        if (!worksByItself(request.stage)) end(request);
    }
}

} // namespace simulator
