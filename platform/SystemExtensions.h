#pragma once

#include "platform/DispatchQueue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The operating system's extension service, with the names of macOS.
//
// Main thread only. Create a request, set its delegate, and submit it. The answers arrive later as calls of the
// delegate on the request's queue, never inside the submission.

namespace platform {

/// One copy of an extension, as a properties request reports it. Texts that the system leaves out are empty.
struct OSSystemExtensionProperties {
    std::string bundleIdentifier;
    std::string bundleShortVersion;
    std::string bundleVersion;
    /// At most one of these is true; none for a copy that the user switched off.
    bool isEnabled = false;
    bool isAwaitingUserApproval = false;
    bool isUninstalling = false;
    /// The system's description of the object, for the log.
    std::string description;
};

enum class OSSystemExtensionReplacementAction : std::int64_t { cancel = 0, replace = 1 };

/// The two values that the system documents; others may arrive.
enum class OSSystemExtensionRequestResult : std::int64_t { completed = 0, willCompleteAfterReboot = 1 };

inline constexpr std::string_view OSSystemExtensionErrorDomain = "OSSystemExtensionErrorDomain";

/// The codes of OSSystemExtensionErrorDomain; others may arrive.
enum class OSSystemExtensionErrorCode : std::int64_t {
    unknown = 1,
    missingEntitlement = 2,
    unsupportedParentBundleLocation = 3,
    extensionNotFound = 4,
    extensionMissingIdentifier = 5,
    duplicateExtensionIdentifier = 6,
    unknownExtensionCategory = 7,
    codeSignatureInvalid = 8,
    validationFailed = 9,
    forbiddenBySystemPolicy = 10,
    requestCanceled = 11,
    requestSuperseded = 12,
    authorizationRequired = 13,
};

/// An error of any domain. The description is the system's own and may be empty.
struct Error {
    std::string domain;
    std::int64_t code = 0;
    std::string localizedDescription;
};

class OSSystemExtensionRequest;

/// Receives the answers to requests, on the request's queue. Must not throw.
class OSSystemExtensionRequestDelegate {
public:
    OSSystemExtensionRequestDelegate() = default;
    OSSystemExtensionRequestDelegate(const OSSystemExtensionRequestDelegate&) = delete;
    OSSystemExtensionRequestDelegate& operator=(const OSSystemExtensionRequestDelegate&) = delete;
    virtual ~OSSystemExtensionRequestDelegate() = default;

    /// Whether `replacement` may take the place of `existing`, which is installed.
    virtual OSSystemExtensionReplacementAction
    requestActionForReplacingExtension(const OSSystemExtensionRequest& request,
                                       const OSSystemExtensionProperties& existing,
                                       const OSSystemExtensionProperties& replacement) = 0;
    /// The user must allow the extension in System Settings. The request waits without a time limit.
    virtual void requestNeedsUserApproval(const OSSystemExtensionRequest& request) = 0;
    /// A last answer, like the next two: no other follows.
    virtual void requestDidFinishWithResult(const OSSystemExtensionRequest& request,
                                            OSSystemExtensionRequestResult result) = 0;
    virtual void requestDidFailWithError(const OSSystemExtensionRequest& request, const Error& error) = 0;
    /// Every copy of the extension, oldest first; none if it is not installed.
    virtual void requestFoundProperties(const OSSystemExtensionRequest& request,
                                        const std::vector<OSSystemExtensionProperties>& properties) = 0;
};

/// A request to the service. It does not keep its delegate alive; answers after the delegate is gone are dropped.
class OSSystemExtensionRequest {
public:
    /// A properties request finds properties or fails; a finish of it is not reported. The other two finish or fail.
    enum class Kind { properties, activation, deactivation };

    static std::shared_ptr<OSSystemExtensionRequest> propertiesRequestForExtension(std::string identifier,
                                                                                   DispatchQueue queue);
    /// Installs the extension from the application's bundle, or replaces the installed one with it.
    static std::shared_ptr<OSSystemExtensionRequest> activationRequestForExtension(std::string identifier,
                                                                                   DispatchQueue queue);
    static std::shared_ptr<OSSystemExtensionRequest> deactivationRequestForExtension(std::string identifier,
                                                                                     DispatchQueue queue);

    Kind kind() const { return kind_; }
    const std::string& identifier() const { return identifier_; }
    DispatchQueue queue() const { return queue_; }

    void setDelegate(std::weak_ptr<OSSystemExtensionRequestDelegate> delegate) { delegate_ = std::move(delegate); }
    /// Null once the delegate is gone.
    std::shared_ptr<OSSystemExtensionRequestDelegate> delegate() const { return delegate_.lock(); }

private:
    OSSystemExtensionRequest(Kind kind, std::string identifier, DispatchQueue queue);

    Kind kind_;
    std::string identifier_;
    DispatchQueue queue_;
    std::weak_ptr<OSSystemExtensionRequestDelegate> delegate_;
};

/// Submits requests and keeps each one until its last answer is delivered.
class OSSystemExtensionManager {
public:
    OSSystemExtensionManager(const OSSystemExtensionManager&) = delete;
    OSSystemExtensionManager& operator=(const OSSystemExtensionManager&) = delete;

    /// The manager of this process.
    static OSSystemExtensionManager& sharedManager();

    /// Returns at once and never fails; failures arrive at the delegate.
    virtual void submitRequest(std::shared_ptr<OSSystemExtensionRequest> request) = 0;

protected:
    OSSystemExtensionManager() = default;
    virtual ~OSSystemExtensionManager() = default;
};

} // namespace platform
