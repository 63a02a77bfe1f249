#include "simulator/scenario/FaultWords.h"

namespace simulator::scenario {

std::vector<std::string> requestWordsFor(Fault::Kind kind) {
    std::vector<std::string> words;
    for (const RequestWord& known : requestWords) {
        Fault fault;
        fault.kind = kind;
        fault.request = known.kind;
        if (isPossible(fault)) words.emplace_back(known.word);
    }
    return words;
}

} // namespace simulator::scenario
