#include "simulator/player/Mac.h"

namespace simulator::player {

// Applications -------------------------------------------------------------------------------------------------------

void Mac::put(const std::string& application, const BundleOnDisk& bundle) {
    const bool isThere = applications_.count(application) > 0;
    if (isThere) {
        quit(application);
        remove(bundleOf(application));
    }
    applications_[application].bundle = bundle;
    write(bundle);
    rest();
}

WordList Mac::applications() const {
    WordList names;
    for (const auto& [name, application] : applications_)
        names.push_back(name);
    return names;
}

void Mac::ask(const std::string& application, const Ask& ask) {
    Application& asking = applications_.at(application);
    if (asking.client.empty()) asking.client = start(application);
    const std::string token = std::to_string(++lastToken_);
    asking.asked[token] = ask;
    submit(application, token, ask);
    rest();
}

void Mac::answer(const std::string& application, const std::string& request, bool replace) {
    const auto question = applications_.at(application).questions.extract(request);
    if (question.empty()) throw NotDone{"no question about " + request + " is open"};
    reply(application, question.mapped(), replace);
    rest();
}

void Mac::tell(const std::string& application, const std::string& token, const std::string& text) {
    Application& listener = applications_.at(application);
    const Ask& ask = listener.asked.at(token);
    listener.heard.push_back({ask.request, text});
    listener.questions.erase(ask.request);
    if (text.rfind("asked ", 0) != 0) return;
    if (ask.reply == Ask::Reply::later)
        listener.questions[ask.request] = token;
    else
        reply(application, token, ask.reply == Ask::Reply::replace);
}

void Mac::quit(const std::string& application) {
    stop(application);
    rest();
}

void Mac::stop(const std::string& application) {
    Application& running = applications_.at(application);
    if (running.client.empty()) return;
    end(application);
    running.client.clear();
    running.questions.clear();
}

std::optional<Heard> Mac::hear(const std::string& application) {
    auto& heard = applications_.at(application).heard;
    if (heard.empty()) return std::nullopt;
    Heard oldest = heard.front();
    heard.pop_front();
    return oldest;
}

// The person and the machine -----------------------------------------------------------------------------------------

void Mac::perform(const Saying& saying) {
    act(saying);
    if (saying.words.front().text == "restart")
        for (const std::string& application : applications())
            stop(application);
    rest();
}

} // namespace simulator::player
