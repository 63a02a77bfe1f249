#include "platform/Bundle.h"

#include "platform/macos/BundleReader.h"

#import <Foundation/Foundation.h>

namespace platform {

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle bundle = readBundle([::NSBundle mainBundle]);
    return bundle;
}

} // namespace platform
