#pragma once

#include "simulator/core/Copies.h"
#include "simulator/core/RequestTransition.h"

#include <map>

namespace simulator {

/// The requests that have not ended. Works on what it was given, which outlives it.
class Requests {
public:
    Requests(State& state, Outbox& outbox, Copies& copies);

    /// By number, oldest first. Those that ended stay until sweep().
    const std::map<std::int64_t, Request>& all() const { return requests_; }

    /// Adds a request and gives it a number and its turn.
    Request& add(Request request);
    /// Takes the one step that the event means and sends the answer that goes with it; an event that means nothing in
    /// the request's stage is a mistake of the caller. A copy that the request leaves unfinished goes with it.
    void take(Request& request, RequestEvent event, AnswerBody body = {});
    /// The same, but does nothing where the event means nothing.
    void takeIfMeant(Request& request, RequestEvent event, AnswerBody body = {});

    /// Whose next step is due; null if there is none.
    Request* nextDue();
    Request* find(const std::string& client, const std::string& token);
    /// Who waits for the user's word on this copy; null if no one does.
    Request* waitingFor(std::int64_t copy);
    /// The oldest request in this stage, of that extension or of any; null if there is none.
    Request* inStage(Stage stage);
    Request* inStage(Stage stage, const std::string& identifier);
    /// An activation or deactivation of the extension that will still be answered, and is not foreign; null if there is
    /// none.
    Request* pending(const std::string& identifier);
    std::size_t countOf(const std::string& client) const;

    void clientLeft(const std::string& client);
    /// Ends every request with an error.
    void withdrawAll();
    /// Forgets every request without an answer; what it was doing is left as it stands.
    void forgetAll() { requests_.clear(); }
    void sweep();

private:
    template <typename Condition>
    Request* firstWhere(Condition condition);
    void settle(const Request& request, Stage before);
    void answer(const Request& request, AnswerBody body);

    State& state_;
    Outbox& outbox_;
    Copies& copies_;
    std::map<std::int64_t, Request> requests_;
    std::int64_t lastTurn_ = 0;
};

/// What was answered, in a few words.
std::string textOf(const AnswerBody& body);

} // namespace simulator
