#pragma once

// The system's extension service, played by a test: ScriptedExtensions.h says how.

#import <Foundation/Foundation.h>

#include <dispatch/dispatch.h>

extern NSString* const OSSystemExtensionErrorDomain;

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

enum OSSystemExtensionRequestResult : NSInteger {
    OSSystemExtensionRequestCompleted = 0,
    OSSystemExtensionRequestWillCompleteAfterReboot = 1
};

@protocol OSSystemExtensionRequestDelegate;

@interface OSSystemExtensionRequest : NSObject {
@public
    NSString* kind_;
    NSString* identifier_;
    dispatch_queue_t queue_;
    id<OSSystemExtensionRequestDelegate>
        delegate_; // not kept, nor cleared when it goes: a test sees who frees it early
}
+ (instancetype)activationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
+ (instancetype)deactivationRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
+ (instancetype)propertiesRequestForExtension:(NSString*)identifier queue:(dispatch_queue_t)queue;
- (id<OSSystemExtensionRequestDelegate>)delegate;
- (void)setDelegate:(id<OSSystemExtensionRequestDelegate>)delegate;
- (NSString*)identifier;
@end

@interface OSSystemExtensionProperties : NSObject {
@public
    NSString* bundleIdentifier_;
    NSString* bundleVersion_;
    NSString* bundleShortVersion_;
    BOOL isEnabled_;
    BOOL isAwaitingUserApproval_;
    BOOL isUninstalling_;
}
- (NSString*)bundleIdentifier;
- (NSString*)bundleVersion;
- (NSString*)bundleShortVersion;
- (BOOL)isEnabled;
- (BOOL)isAwaitingUserApproval;
- (BOOL)isUninstalling;
@end

@protocol OSSystemExtensionRequestDelegate <NSObject>
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
+ (OSSystemExtensionManager*)sharedManager;
- (void)submitRequest:(OSSystemExtensionRequest*)request;
@end
