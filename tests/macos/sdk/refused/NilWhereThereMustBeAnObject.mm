// error: null passed to a callee that requires a non-null argument
#import <SystemExtensions/SystemExtensions.h>

id refused() {
    return [OSSystemExtensionRequest activationRequestForExtension:nil queue:dispatch_get_main_queue()];
}
