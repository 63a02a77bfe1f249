#include "tests/simulator/sample/SampleMac.h"

namespace simulator {
namespace {

using testing::ElementsAre;

class APropertiesRequest : public testing::Test {
protected:
    SampleMac mac;
};

TEST_F(APropertiesRequest, FindsNothingWhereThereIsNoCopy) {
    mac.properties("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: found"));
}

TEST_F(APropertiesRequest, FailsWithFourForNoCopyOnASystemThatDoes) {
    mac.set("properties", "error");
    mac.properties("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: failed 4"));
}

TEST_F(APropertiesRequest, FindsEveryCopyOldestFirst) {
    mac.install("3", "uninstalling");
    mac.install("3", "uninstalling");
    mac.install("1", "enabled");
    mac.install("2", "waiting");
    mac.properties("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: found 3 uninstalling 3 uninstalling 1 enabled 2 awaiting"));
}

TEST_F(APropertiesRequest, SeesADisabledCopyAsNeitherEnabledNorWaiting) {
    mac.install("1", "disabled");
    mac.properties("a");
    EXPECT_THAT(mac.heard(), ElementsAre("a: found 1 neither"));
}

TEST_F(APropertiesRequest, DoesNotSeeACopyThatIsNotYetThere) {
    mac.install("1", "enabled");
    mac.activate("a");
    mac.heard();
    mac.properties("b");
    EXPECT_THAT(mac.heard(), ElementsAre("b: found 1 enabled"));
}

TEST_F(APropertiesRequest, IsAnsweredToAnyProgram) {
    mac.install("1", "enabled");
    mac.mustDo(mac.machine().submit({"client", "a", "", RequestKind::properties, camera}));
    EXPECT_THAT(mac.heard(), ElementsAre("a: found 1 enabled"));
}

TEST_F(APropertiesRequest, SupersedesNothing) {
    mac.activate("a");
    mac.properties("b");
    EXPECT_THAT(mac.heard(), ElementsAre("a: needs approval", "b: found 2105 awaiting"));
}

} // namespace
} // namespace simulator
