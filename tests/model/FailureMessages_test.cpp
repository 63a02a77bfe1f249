#include "model/FailureMessages.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

namespace model {
namespace {

struct Meaning {
    std::int64_t code;
    std::string_view text;
};

void PrintTo(const Meaning& meaning, std::ostream* out) {
    *out << "code " << meaning.code;
}

constexpr Meaning meanings[]{
    {1, "An unknown error occurred."},
    {2, "Missing a required entitlement."},
    {3, "Unsupported parent bundle location."},
    {4, "Extension not found."},
    {5, "Missing extension identifier."},
    {6, "Duplicate extension identifier."},
    {7, "Unknown extension category."},
    {8, "System extension signature is invalid."},
    {9, "System extension validation failed."},
    {10, "Activation forbidden by system policy."},
    {11, "Request was canceled."},
    {12, "Superseded by request for same identifier."},
    {13, "Authorization required."},
};

class AFailureCode : public testing::TestWithParam<Meaning> {};

TEST_P(AFailureCode, HasItsMessage) {
    EXPECT_EQ(failureMessage(GetParam().code), GetParam().text);
}

std::string nameOfCode(const testing::TestParamInfo<Meaning>& info) {
    return std::to_string(info.param.code);
}

INSTANTIATE_TEST_SUITE_P(Known, AFailureCode, testing::ValuesIn(meanings), nameOfCode);

TEST(AnUnknownFailureCode, HasTheMessageUnexpectedError) {
    for (const std::int64_t code :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{14}, std::int64_t{4'294'967'297},
          std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max()}) {
        EXPECT_EQ(failureMessage(code), "Unexpected error.") << code;
    }
}

} // namespace
} // namespace model
