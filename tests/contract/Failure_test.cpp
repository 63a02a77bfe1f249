#include "tests/contract/ContractTest.h"

#include <cstdint>
#include <limits>

namespace contract {
namespace {

using platform::Error;
using testing::ElementsAre;

/// What can go wrong in the same way with each kind of request.
class AFailedRequest : public TheExtensionService {
protected:
    /// The error that reaches the listener of a request of that kind when the service fails it with this one.
    Error delivered(const Error& error, const Kind kind = Kind::activation) {
        stage->failNext(kind, error);
        submit("first", kind, camera);
        EXPECT_THAT(heard(), ElementsAre("first failed " + std::to_string(error.code)));
        return record.errors.empty() ? Error{} : record.errors.back();
    }
};

constexpr auto foreignDomain = "NSPOSIXErrorDomain";
const std::string ownDomain{platform::OSSystemExtensionErrorDomain};

TEST_F(AFailedRequest, TellsTheDomain) {
    EXPECT_EQ(delivered({foreignDomain, 2, "No such file"}).domain, foreignDomain);
}

TEST_F(AFailedRequest, TellsTheServicesOwnDomain) {
    EXPECT_EQ(delivered({ownDomain, 8, "The seal is broken."}).domain, "OSSystemExtensionErrorDomain");
}

TEST_F(AFailedRequest, TellsTheCode) {
    EXPECT_EQ(delivered({ownDomain, 13, "Not authorised."}).code, 13);
}

TEST_F(AFailedRequest, TellsACodeThatNobodyKnows) {
    EXPECT_EQ(delivered({ownDomain, 4711, "Something else."}).code, 4711);
}

TEST_F(AFailedRequest, TellsTheLeastCode) {
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    EXPECT_EQ(delivered({foreignDomain, least, "Low"}).code, least);
}

TEST_F(AFailedRequest, TellsTheGreatestCode) {
    constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(delivered({foreignDomain, greatest, "High"}).code, greatest);
}

TEST_F(AFailedRequest, TellsTheDescription) {
    EXPECT_EQ(delivered({ownDomain, 1, "Nicht möglich: 100 % „kaputt“\nzweite Zeile"}).localizedDescription,
              "Nicht möglich: 100 % „kaputt“\nzweite Zeile");
}

TEST_F(AFailedRequest, MayHaveNoDescription) {
    EXPECT_EQ(delivered({ownDomain, 1, ""}).localizedDescription, "");
}

TEST_F(AFailedRequest, MayBeADeactivation) {
    EXPECT_EQ(delivered({ownDomain, 13, "Not authorised."}, Kind::deactivation).code, 13);
}

TEST_F(AFailedRequest, MayBeAQuestionForProperties) {
    EXPECT_EQ(delivered({ownDomain, 1, "Not now."}, Kind::properties).code, 1);
}

TEST_F(AFailedRequest, DoesNotSpoilTheNext) {
    delivered({ownDomain, 1, "Not now."});
    activate("second");
    EXPECT_THAT(heard(), ElementsAre("first failed 1", "second needs approval"));
}

} // namespace
} // namespace contract
