#include "platform/linux/SimulatorManager.h"

#include "platform/linux/ExitStatus.h"
#include "platform/linux/SimulatorClient.h"

#include <QCoreApplication>

#include <utility>

namespace platform {

namespace {

/// Calls the delegate with one answer. A question's answer goes back through `client`, if that still lives.
struct Delivery {
    OSSystemExtensionRequestDelegate* delegate;
    const OSSystemExtensionRequest& request;
    const QString& token;
    SimulatorClient* client;

    void operator()(const ReplacementAsked& asked) const {
        const auto action =
            delegate ? delegate->requestActionForReplacingExtension(request, asked.existing, asked.replacement)
                     : OSSystemExtensionReplacementAction::cancel;
        if (client) client->answerReplacement(token, action);
    }
    void operator()(const NeedsApproval&) const {
        if (delegate) delegate->requestNeedsUserApproval(request);
    }
    void operator()(const Finished& finished) const {
        if (delegate) delegate->requestDidFinishWithResult(request, finished.result);
    }
    void operator()(const Error& error) const {
        if (delegate) delegate->requestDidFailWithError(request, error);
    }
    void operator()(const FoundProperties& found) const {
        if (delegate) delegate->requestFoundProperties(request, found.copies);
    }
};

} // namespace

SimulatorManager::SimulatorManager(QString busAddress) : busAddress_{std::move(busAddress)} {
}

SimulatorManager::~SimulatorManager() = default;

void SimulatorManager::submitRequest(Request request) {
    if (!client_ || !client_->isConnected()) connectToBus();
    const auto token = QString::number(++lastToken_);
    const auto kind = request->kind();
    const auto identifier = QString::fromStdString(request->identifier());
    requests_.emplace(token, std::move(request));
    client_->submit(token, kind, identifier);
}

void SimulatorManager::close() {
    client_.reset();
    requests_.clear();
}

void SimulatorManager::connectToBus() {
    client_ = std::make_shared<SimulatorClient>(
        busAddress_, SimulatorClient::Listener{
                         [this](const QString& token, SimulatorAnswer answer) { answered(token, std::move(answer)); },
                         [] { QCoreApplication::exit(exitStatusOfRestart); }});
}

void SimulatorManager::answered(const QString& token, SimulatorAnswer answer) {
    const auto found = requests_.find(token);
    if (found == requests_.end()) return;
    const auto request = found->second;
    if (isLast(answer)) requests_.erase(found);
    deliver(token, request, std::move(answer));
}

// The work holds the request, which therefore lives until its last answer was delivered.
void SimulatorManager::deliver(const QString& token, const Request& request, SimulatorAnswer answer) {
    request->queue().async(
        [token, request, answer = std::move(answer), client = std::weak_ptr<SimulatorClient>{client_}] {
            const auto delegate = request->delegate();
            const auto connected = client.lock();
            std::visit(Delivery{delegate.get(), *request, token, connected.get()}, answer);
        });
}

} // namespace platform
