#pragma once

#include "simulator/scenario/Mac.h"

#include <string>
#include <vector>

namespace simulator::scenario {

// What there is, as a scenario's lines write it.

/// "2.1/2105"
std::string written(const Version& version);
/// "needs approval", "finished 0", "failed 8 "text"" and so on.
std::string written(const AnswerBody& answer);
/// "2.0/2004 activated enabled, 2.1/2105 activated waiting for user", or "none".
std::string written(const std::vector<CopyThere>& copies);
/// "com.example.camera user, com.example.driver silent", or "none".
std::string written(const std::vector<RequestThere>& requests);
/// The one word for the three flags of a copy.
std::string conditionOf(const CopyRecord& record);

} // namespace simulator::scenario
