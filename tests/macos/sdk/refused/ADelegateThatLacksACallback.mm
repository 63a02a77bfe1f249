// error: method 'requestNeedsUserApproval:' in protocol 'OSSystemExtensionRequestDelegate' not implemented
#import <SystemExtensions/SystemExtensions.h>

@interface Delegate : NSObject <OSSystemExtensionRequestDelegate>
@end

@implementation Delegate
@end
