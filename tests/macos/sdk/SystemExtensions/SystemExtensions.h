#pragma once

// What the application uses of the system's SystemExtensions, and nothing else; all of it was looked up.

#import <Foundation/Foundation.h>

#include <dispatch/dispatch.h>

#pragma clang assume_nonnull begin

extern const NSErrorDomain OSSystemExtensionErrorDomain;

// Why a request failed.
enum OSSystemExtensionErrorCode : NSInteger {
    OSSystemExtensionErrorUnknown = 1,
    OSSystemExtensionErrorMissingEntitlement = 2,
    OSSystemExtensionErrorUnsupportedParentBundleLocation = 3,
    OSSystemExtensionErrorExtensionNotFound = 4,
    OSSystemExtensionErrorExtensionMissingIdentifier = 5,
    OSSystemExtensionErrorDuplicateExtensionIdentifer = 6,
    OSSystemExtensionErrorUnknownExtensionCategory = 7,
    OSSystemExtensionErrorCodeSignatureInvalid = 8,
    OSSystemExtensionErrorValidationFailed = 9,
    OSSystemExtensionErrorForbiddenBySystemPolicy = 10,
    OSSystemExtensionErrorRequestCanceled = 11,
    OSSystemExtensionErrorRequestSuperseded = 12,
    OSSystemExtensionErrorAuthorizationRequired = 13
};

enum OSSystemExtensionReplacementAction : NSInteger {
    OSSystemExtensionReplacementActionCancel = 0,
    OSSystemExtensionReplacementActionReplace = 1
};

// How a request finished that did not fail.
enum OSSystemExtensionRequestResult : NSInteger {
    OSSystemExtensionRequestCompleted = 0,
    OSSystemExtensionRequestWillCompleteAfterReboot = 1
};

@protocol OSSystemExtensionRequestDelegate;

// A request, its answers, and who takes it.
@interface OSSystemExtensionRequest : NSObject
+ (instancetype)activationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
+ (instancetype)deactivationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
+ (instancetype)propertiesRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
@property (nullable, weak) id<OSSystemExtensionRequestDelegate> delegate;
@end

// A copy of an extension that the system knows.
@interface OSSystemExtensionProperties : NSObject
@property (readonly) NSString* bundleIdentifier;
@property (readonly) NSString* bundleVersion;
@property (readonly) NSString* bundleShortVersion;
@property (readonly) BOOL isEnabled;
@property (readonly) BOOL isAwaitingUserApproval;
@property (readonly) BOOL isUninstalling;
@end

// Who is told what becomes of a request; all but the last must be there.
@protocol OSSystemExtensionRequestDelegate <NSObject>
@required
- (OSSystemExtensionReplacementAction)request:(OSSystemExtensionRequest*)request
                  actionForReplacingExtension:(OSSystemExtensionProperties*)existing
                                withExtension:(OSSystemExtensionProperties*)ext;
- (void)requestNeedsUserApproval:(OSSystemExtensionRequest*)request;
- (void)request:(OSSystemExtensionRequest*)request didFinishWithResult:(OSSystemExtensionRequestResult)result;
- (void)request:(OSSystemExtensionRequest*)request didFailWithError:(NSError*)error;
@optional
- (void)request:(OSSystemExtensionRequest*)request foundProperties:(NSArray<OSSystemExtensionProperties*>*)properties;
@end

@interface OSSystemExtensionManager : NSObject
@property (class, readonly) OSSystemExtensionManager* sharedManager;
- (void)submitRequest:(OSSystemExtensionRequest*)request;
@end

// Newer than the oldest system that the application runs on.
__attribute__((unavailable("macOS 15.1")))
@interface OSSystemExtensionsWorkspace : NSObject
@end

#pragma clang assume_nonnull end
