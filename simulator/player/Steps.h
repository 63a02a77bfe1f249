#pragma once

#include "simulator/core/Copy.h"
#include "simulator/player/Mac.h"

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace simulator::player {

/// What a line has done to a Mac. Throws NotDone where it does not go as the line says.
using Play = std::function<void(Mac&)>;

/// A line that is being read, and the applications that the lines before it have put there.
struct Reading {
    Words& words;
    std::set<std::string>& applications;
};

/// What a line may begin with, beside the verbs of the machine, or what may follow "expect". read throws NotUnderstood.
struct LineVerb {
    std::string_view word;
    std::string_view usage;
    Play (*read)(Reading& reading);
};

/// What lies on the disk, and what applications do.
const std::vector<LineVerb>& lineVerbs();
/// What may follow "expect".
const std::vector<LineVerb>& expectations();
/// Reads what follows "expect".
Play readExpectation(Reading& reading);
/// Every answer that no line expected is too much.
void expectNothing(Mac& mac);

/// Takes the name of an application that is there.
std::string takeApplication(Reading& reading);
/// Takes "as APPLICATION", or another word for "as", if it is there; it is the sample application if not.
std::string takeApplicationAfter(std::string_view word, Reading& reading);
/// "2.1/2105"
Version takeVersion(Words& words);

} // namespace simulator::player
