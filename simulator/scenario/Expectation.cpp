#include "simulator/scenario/Expectation.h"

#include "simulator/scenario/Texts.h"

#include <algorithm>

namespace simulator::scenario {

namespace {

bool isVersionOf(const Version& version, const CopyRecord& record) {
    return version == Version{record.shortVersion, record.version};
}

bool fits(const NeedsApproval&, const NeedsApproval&) {
    return true;
}

bool fits(const Finished& expected, const Finished& heard) {
    return expected == heard;
}

bool fits(const ExpectedQuestion& expected, const ReplacementAsked& heard) {
    return isVersionOf(expected.existing, heard.existing) && isVersionOf(expected.replacement, heard.replacement);
}

bool fits(const ExpectedFailure& expected, const Failure& heard) {
    return expected.code == heard.code && expected.domain == heard.domain &&
           (!expected.description || *expected.description == heard.description);
}

bool fits(const ExpectedProperties& expected, const FoundProperties& heard) {
    return std::equal(expected.records.begin(), expected.records.end(), heard.copies.begin(), heard.copies.end(),
                      [](const ExpectedProperties::Record& record, const CopyRecord& copy) {
                          return isVersionOf(record.version, copy) && record.condition == conditionOf(copy);
                      });
}

/// An answer of another kind.
template <typename Expected, typename Other>
bool fits(const Expected&, const Other&) {
    return false;
}

} // namespace

bool matches(const ExpectedAnswer& expected, const AnswerBody& heard) {
    return std::visit([](const auto& wanted, const auto& given) { return fits(wanted, given); }, expected, heard);
}

} // namespace simulator::scenario
