#include "tests/contract/ContractTest.h"

#include <utility>

namespace contract {

std::shared_ptr<OSSystemExtensionRequest> makeRequest(const Kind kind, const std::string& identifier) {
    const auto queue = platform::DispatchQueue::main();
    switch (kind) {
    case Kind::activation:
        return OSSystemExtensionRequest::activationRequestForExtension(identifier, queue);
    case Kind::deactivation:
        return OSSystemExtensionRequest::deactivationRequestForExtension(identifier, queue);
    case Kind::properties:
        break;
    }
    return OSSystemExtensionRequest::propertiesRequestForExtension(identifier, queue);
}

std::weak_ptr<OSSystemExtensionRequest> TheExtensionService::submit(const std::string& name, const Kind kind,
                                                                    const std::string& identifier) {
    auto request = makeRequest(kind, identifier);
    const auto listener = std::make_shared<Listener>(name, record);
    listeners[name] = listener;
    request->setDelegate(listener);
    const std::weak_ptr<OSSystemExtensionRequest> kept = request;
    stage->manager().submitRequest(std::move(request));
    return kept;
}

std::weak_ptr<OSSystemExtensionRequest> TheExtensionService::activate(const std::string& name,
                                                                      const std::string& identifier) {
    return submit(name, Kind::activation, identifier);
}

std::weak_ptr<OSSystemExtensionRequest> TheExtensionService::deactivate(const std::string& name,
                                                                        const std::string& identifier) {
    return submit(name, Kind::deactivation, identifier);
}

std::weak_ptr<OSSystemExtensionRequest> TheExtensionService::query(const std::string& name,
                                                                   const std::string& identifier) {
    return submit(name, Kind::properties, identifier);
}

const std::vector<std::string>& TheExtensionService::heard() {
    stage->settle();
    return record.lines;
}

std::vector<std::string> TheExtensionService::copies(const std::string& identifier) {
    stage->settle();
    Record apart;
    const auto listener = std::make_shared<Listener>("copies", apart);
    auto request = makeRequest(Kind::properties, identifier);
    request->setDelegate(listener);
    stage->manager().submitRequest(std::move(request));
    stage->settle();
    EXPECT_EQ(apart.lines.size(), 1U) << "the copies were not told";
    std::vector<std::string> texts;
    for (const auto& copy : apart.copies)
        texts.push_back(textOf(copy));
    return texts;
}

std::string textOf(const OSSystemExtensionProperties& copy) {
    auto text = copy.bundleShortVersion + " " + copy.bundleVersion;
    if (copy.isEnabled) text += " enabled";
    if (copy.isAwaitingUserApproval) text += " awaiting";
    if (copy.isUninstalling) text += " uninstalling";
    return text;
}

} // namespace contract
