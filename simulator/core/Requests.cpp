#include "simulator/core/Requests.h"

#include "simulator/core/Require.h"

#include <algorithm>
#include <tuple>

namespace simulator {

namespace {

bool worksByItself(Stage stage) {
    return stage == Stage::delayed || stage == Stage::checking || stage == Stage::validating ||
           stage == Stage::staging || stage == Stage::removing;
}

bool waitsForWord(Stage stage) {
    return stage == Stage::replacement || stage == Stage::user || stage == Stage::authorization;
}

bool isFailure(const AnswerBody& body, std::int64_t code) {
    const Failure* const failure = std::get_if<Failure>(&body);
    return failure && failure->code == code;
}

/// Whether the answer is the one that the table names.
bool fits(const AnswerBody& body, Reply reply) {
    switch (reply) {
    case Reply::nothing:
        return std::holds_alternative<std::monostate>(body);
    case Reply::replacementAsked:
        return std::holds_alternative<ReplacementAsked>(body);
    case Reply::needsApproval:
        return std::holds_alternative<NeedsApproval>(body);
    case Reply::completed:
        return body == AnswerBody{Finished{Finished::completed}};
    case Reply::finished:
        return std::holds_alternative<Finished>(body);
    case Reply::failed:
        return std::holds_alternative<Failure>(body);
    case Reply::canceled:
        return isFailure(body, code::requestCanceled);
    case Reply::superseded:
        return isFailure(body, code::requestSuperseded);
    case Reply::unauthorized:
        return isFailure(body, code::authorizationRequired) || isFailure(body, code::requestCanceled);
    case Reply::foundProperties:
        return std::holds_alternative<FoundProperties>(body);
    }
    return false;
}

struct TextOfBody {
    std::string operator()(std::monostate) const { return {}; }
    std::string operator()(const ReplacementAsked&) const { return "asked for replacement"; }
    std::string operator()(const NeedsApproval&) const { return "needs approval"; }
    std::string operator()(const Finished& finished) const { return "finished " + std::to_string(finished.result); }
    std::string operator()(const Failure& failure) const { return "failed " + std::to_string(failure.code); }
    std::string operator()(const FoundProperties& found) const {
        return "found " + std::to_string(found.copies.size());
    }
};

} // namespace

std::string textOf(const AnswerBody& body) {
    return std::visit(TextOfBody{}, body);
}

Requests::Requests(State& state, Outbox& outbox, Copies& copies) : state_{state}, outbox_{outbox}, copies_{copies} {
}

Request& Requests::add(Request request) {
    request.number = ++state_.lastNumber;
    request.since = state_.clock;
    request.turn = ++lastTurn_;
    outbox_.events.push_back({state_.clock, request.identifier, std::string{nameOf(request.kind)} + " submitted"});
    return requests_.emplace(request.number, std::move(request)).first->second;
}

void Requests::take(Request& request, RequestEvent event, AnswerBody body) {
    const RequestTransition* const row = transitionOf(request.stage, event);
    require(row != nullptr, "the event means something in this state");
    require(fits(body, row->reply), "the answer is the one that the table names");
    outbox_.requestTransitions.push_back(row);
    request.stage = row->to;
    request.turn = ++lastTurn_;
    if (row->reply != Reply::nothing) answer(request, std::move(body));
    settle(request, row->from);
    if (request.client.empty() && waitsForWord(request.stage)) take(request, RequestEvent::clientLeft);
}

void Requests::takeIfMeant(Request& request, RequestEvent event, AnswerBody body) {
    const RequestTransition* const row = transitionOf(request.stage, event);
    if (!row) return;
    take(request, event, row->reply == Reply::nothing ? AnswerBody{} : std::move(body));
}

/// What a request leaves behind when it ends.
void Requests::settle(const Request& request, Stage before) {
    if (request.stage != Stage::ended) return;
    copies_.dropUnfinished(request.copy);
    if (before == Stage::removing) copies_.endRemoval(request.identifier);
}

void Requests::answer(const Request& request, AnswerBody body) {
    outbox_.events.push_back(
        {state_.clock, request.identifier, std::string{nameOf(request.kind)} + " " + textOf(body)});
    if (!request.client.empty()) outbox_.answers.push_back({request.client, request.token, std::move(body)});
}

Request* Requests::nextDue() {
    Request* next = nullptr;
    for (auto& [number, request] : requests_) {
        if (!worksByItself(request.stage) || request.due > state_.clock) continue;
        if (!next || std::tie(request.due, request.turn) < std::tie(next->due, next->turn)) next = &request;
    }
    return next;
}

template <typename Condition>
Request* Requests::firstWhere(Condition condition) {
    const auto found = std::find_if(requests_.begin(), requests_.end(), [&](const auto& entry) {
        return entry.second.stage != Stage::ended && condition(entry.second);
    });
    return found == requests_.end() ? nullptr : &found->second;
}

Request* Requests::find(const std::string& client, const std::string& token) {
    return firstWhere([&](const Request& request) { return request.client == client && request.token == token; });
}

Request* Requests::waitingFor(std::int64_t copy) {
    return firstWhere([&](const Request& request) { return request.stage == Stage::user && request.copy == copy; });
}

Request* Requests::inStage(Stage stage) {
    return firstWhere([&](const Request& request) { return request.stage == stage; });
}

Request* Requests::inStage(Stage stage, const std::string& identifier) {
    return firstWhere(
        [&](const Request& request) { return request.stage == stage && request.identifier == identifier; });
}

Request* Requests::pending(const std::string& identifier) {
    return firstWhere([&](const Request& request) {
        return request.kind != RequestKind::properties && request.stage != Stage::silent && !request.isForeign &&
               request.identifier == identifier;
    });
}

std::size_t Requests::countOf(const std::string& client) const {
    const auto ofClient = [&](const auto& entry) { return entry.second.client == client; };
    return static_cast<std::size_t>(std::count_if(requests_.begin(), requests_.end(), ofClient));
}

void Requests::clientLeft(const std::string& client) {
    for (auto& [number, request] : requests_) {
        if (request.client != client || request.stage == Stage::ended) continue;
        request.client.clear();
        take(request, RequestEvent::clientLeft);
    }
    sweep();
}

void Requests::withdrawAll() {
    for (auto& [number, request] : requests_) {
        takeIfMeant(request, RequestEvent::withdrawn, failureWith(code::requestCanceled));
    }
    sweep();
}

void Requests::sweep() {
    for (auto entry = requests_.begin(); entry != requests_.end();) {
        entry = entry->second.stage == Stage::ended ? requests_.erase(entry) : std::next(entry);
    }
}

} // namespace simulator
