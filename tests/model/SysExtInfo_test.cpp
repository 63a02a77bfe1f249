#include "model/SysExtInfo.h"

#include "tests/model/RecordText.h"

#include <concepts>
#include <cstdint>
#include <string>
#include <vector>

namespace model {
namespace {

TEST(ARecord, HasItsFieldsInOrder) {
    const SysExtInfo record{"id", "state", true, false, true, false, true, "version", "icon", "name", std::int64_t{-5}};
    EXPECT_EQ(record.id, "id");
    EXPECT_EQ(record.state, "state");
    EXPECT_TRUE(record.present);
    EXPECT_FALSE(record.enabled);
    EXPECT_TRUE(record.awaiting);
    EXPECT_FALSE(record.reboot);
    EXPECT_TRUE(record.uninst);
    EXPECT_EQ(record.version, "version");
    EXPECT_EQ(record.iconName, "icon");
    EXPECT_EQ(record.driverName, "name");
    EXPECT_EQ(record.intversion, -5);
}

TEST(ARecord, IsCopiedAsAValue) {
    const auto original = initialRecords().front();
    auto copy = original;
    copy.state = "Enabled";
    copy.enabled = true;
    EXPECT_EQ(original.state, "Not installed");
    EXPECT_FALSE(original.enabled);
}

TEST(ARecord, HasNoEquality) {
    static_assert(!std::equality_comparable<SysExtInfo>);
}

TEST(TheInitialList, IsBaseCameraAndNetworkOfWhichNothingIsKnown) {
    EXPECT_EQ(textsOf(initialRecords()),
              (std::vector<std::string>{
                  "com.kelvra.driverkit.base 'Not installed' 'n/a' Ethernet 'Old Driver' 0",
                  "com.kelvra.ip-camera.cmio 'Not installed' 'n/a' VideoCamera 'Camera Driver' 0",
                  "com.kelvra.driverkit.usb-to-poe 'Not installed' 'n/a' Ethernet 'Network Driver' 0",
              }));
}

} // namespace
} // namespace model
