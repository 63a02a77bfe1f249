#include "platform/SystemExtensions.h"

#include <utility>

namespace platform {

OSSystemExtensionRequest::OSSystemExtensionRequest(const Kind kind, std::string identifier, const DispatchQueue queue)
    : kind_{kind}, identifier_{std::move(identifier)}, queue_{queue} {
}

namespace {

/// Opens the private constructor to std::make_shared.
struct Creatable : OSSystemExtensionRequest {
    explicit Creatable(const OSSystemExtensionRequest& request) : OSSystemExtensionRequest{request} {}
};

} // namespace

std::shared_ptr<OSSystemExtensionRequest>
OSSystemExtensionRequest::propertiesRequestForExtension(std::string identifier, const DispatchQueue queue) {
    return std::make_shared<Creatable>(OSSystemExtensionRequest{Kind::properties, std::move(identifier), queue});
}

std::shared_ptr<OSSystemExtensionRequest>
OSSystemExtensionRequest::activationRequestForExtension(std::string identifier, const DispatchQueue queue) {
    return std::make_shared<Creatable>(OSSystemExtensionRequest{Kind::activation, std::move(identifier), queue});
}

std::shared_ptr<OSSystemExtensionRequest>
OSSystemExtensionRequest::deactivationRequestForExtension(std::string identifier, const DispatchQueue queue) {
    return std::make_shared<Creatable>(OSSystemExtensionRequest{Kind::deactivation, std::move(identifier), queue});
}

} // namespace platform
