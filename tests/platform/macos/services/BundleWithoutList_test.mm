#include "tests/platform/macos/services/BundleOnDisk.h"

// What GNUstep says of a bundle that has no list. A Mac may give one of its own making.

namespace platform {
namespace {

using ABundle = BundleOnDisk;

TEST_F(ABundle, HasNoDictionaryWhereThereIsNoneAndSaysSo) {
    const NSBundle bundle = read("");
    EXPECT_FALSE(bundle.infoDictionary());
    EXPECT_EQ(bundle.infoFile(), path() + "/Contents/Info.plist");
    EXPECT_EQ(bundle.infoProblem(), "it is missing, or no property list");
}

} // namespace
} // namespace platform
