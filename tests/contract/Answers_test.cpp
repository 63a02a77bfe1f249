#include "tests/contract/ContractTest.h"

#include <cstdint>
#include <limits>

namespace contract {
namespace {

using platform::Error;
using testing::ElementsAre;

TEST_F(TheExtensionService, ReportsEachFieldOfACopy) {
    install(driver, "2.0", "2004");
    query("copies", driver);
    ASSERT_THAT(heard(), ElementsAre("copies found 1"));
    const auto& copy = record.copies.at(0);
    EXPECT_EQ(copy.description, "<com.kelvra.driverkit.usb-to-poe 2.0/2004>");
    EXPECT_EQ(copy.bundleIdentifier, driver);
    EXPECT_EQ(copy.bundleShortVersion, "2.0");
    EXPECT_EQ(copy.bundleVersion, "2004");
    EXPECT_TRUE(copy.isEnabled);
    EXPECT_FALSE(copy.isAwaitingUserApproval);
    EXPECT_FALSE(copy.isUninstalling);
}

TEST_F(TheExtensionService, ReportsSeveralCopiesOldestFirst) {
    act({"install", camera, "3.0", "3001", "uninstalling"});
    act({"install", camera, "1.0", "1001", "uninstalling"});
    act({"install", camera, "1.0", "1001", "uninstalling"});
    act({"install", camera, "2.2", "2210", "waiting"});
    install(camera, "2.1", "2105");
    EXPECT_THAT(copies(), ElementsAre("3.0 3001 uninstalling", "1.0 1001 uninstalling", "1.0 1001 uninstalling",
                                      "2.2 2210 awaiting", "2.1 2105 enabled"));
}

TEST_F(TheExtensionService, ReportsVersionsUnchanged) {
    act({"install", camera, " ", " ", "uninstalling"});
    act({"install", camera, "二.一 β", " 00002105 ", "uninstalling"});
    act({"install", camera, std::string(4096, '1'), "-99999999999999999999", "uninstalling"});
    EXPECT_THAT(copies(), ElementsAre("    uninstalling", "二.一 β  00002105  uninstalling",
                                      std::string(4096, '1') + " -99999999999999999999 uninstalling"));
}

// Errors -------------------------------------------------------------------------------------------------------------

const char* verbOf(const Kind kind) {
    return kind == Kind::activation ? "activate" : kind == Kind::deactivation ? "deactivate" : "properties";
}

class AFailedRequest : public TheExtensionService {
protected:
    /// The error that the listener receives if the service fails a request of this kind with `error`.
    Error delivered(const Error& error, const Kind kind = Kind::activation) {
        act({"fault", "next", verbOf(kind), std::to_string(error.code), error.localizedDescription, "--domain",
             error.domain});
        submit("first", kind, camera);
        EXPECT_EQ(heard().back(), "first failed " + std::to_string(error.code));
        return record.errors.empty() ? Error{} : record.errors.back();
    }
};

const std::string ownDomain{platform::OSSystemExtensionErrorDomain};

TEST_F(AFailedRequest, ReportsDomainCodeAndDescriptionUnchanged) {
    const std::vector<Error> errors{
        {"NSPOSIXErrorDomain", 2, "No such file"},
        {ownDomain, 8, "The seal is broken."},
        {ownDomain, 4711, "Something else."},
        {ownDomain, 1, ""},
        {ownDomain, 1, "Nicht möglich: 100 % „kaputt“\nzweite Zeile"},
        {"NSPOSIXErrorDomain", std::numeric_limits<std::int64_t>::min(), "Low"},
        {"NSPOSIXErrorDomain", std::numeric_limits<std::int64_t>::max(), "High"},
    };
    for (const auto& error : errors) {
        const auto heardOf = delivered(error);
        EXPECT_EQ(heardOf.domain, error.domain);
        EXPECT_EQ(heardOf.code, error.code);
        EXPECT_EQ(heardOf.localizedDescription, error.localizedDescription);
    }
}

TEST_F(AFailedRequest, CanBeOfEachKind) {
    EXPECT_EQ(delivered({ownDomain, 13, "Not authorized."}, Kind::deactivation).code, 13);
    EXPECT_EQ(delivered({ownDomain, 1, "Not now."}, Kind::properties).code, 1);
}

} // namespace
} // namespace contract
