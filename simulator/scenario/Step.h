#pragma once

#include "simulator/core/Disk.h"
#include "simulator/scenario/Expectation.h"

#include <cstddef>
#include <optional>
#include <string>
#include <variant>

namespace simulator::scenario {

/// An application is put on the disk; it carries nothing yet.
struct PutApplication {
    std::string name;
    BundleOnDisk bundle;
};

/// An extension is put into an application, instead of one of the same file name.
struct Carry {
    std::string application;
    /// Where it is sealed and names no team, it is of the application's team; where a camera names no service, it has
    /// one in a group of its own.
    ExtensionOnDisk extension;
    bool isSealed = true;
};

/// Another version of the whole application takes its place.
struct Update {
    std::string application;
    Version version;
};

struct Move {
    std::string application;
    std::string path;
};

/// A file of an extension is changed, so that it no longer matches its seal.
struct Damage {
    std::string application;
    std::string fileName;
};

struct Quit {
    std::string application;
};

using Action = std::variant<PutApplication, Carry, Update, Move, Damage, Ask, AnswerQuestion, Quit, Deed, Expectation>;

/// One line of a scenario.
struct Step {
    std::size_t line = 0;
    /// As it is written, without the comment.
    std::string text;
    Action action;
};

} // namespace simulator::scenario
