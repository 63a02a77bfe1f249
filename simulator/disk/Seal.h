#pragma once

#include "simulator/disk/PropertyList.h"

#include <QCryptographicHash>

#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <string>

namespace simulator {

/// The SHA-256 of each file in a bundle, by its path in it; of a link that of its target, after the word "link".
using Digests = std::map<std::string, std::string>;

/// What stands in for a code signature: whose bundle it is, what it may do, and what its files were when it was
/// sealed. It lies in the bundle, in a file that no real system reads.
struct Seal {
    std::string team;
    PropertyList::Dictionary entitlements;
    Digests files;
};

/// The folder of a bundle in which its Info.plist and its seal lie: Contents, or the bundle itself where it has none,
/// as a driver has none.
std::string contentsOf(const std::string& bundle);

/// Nothing if the bundle has none that can be read.
std::optional<Seal> readSeal(const std::string& bundle);
/// Answers with what went wrong; empty if it is written. It appears whole or not at all.
std::string writeSeal(const std::string& bundle, const Seal& seal);

/// Takes the digests of all files of a bundle but its own seal, a piece at a time, so that nobody has to wait until the
/// largest of them is read.
class Digestion {
public:
    explicit Digestion(const std::string& bundle);

    /// Reads about a megabyte. Says whether there is more to read.
    bool goOn();
    /// When all is read: nothing if a file cannot be, as a pipe cannot. A link is never the same as a file.
    const std::optional<Digests>& digests() const { return digests_; }

private:
    void begin(const std::filesystem::directory_entry& entry);
    void read();
    void giveUp();

    std::filesystem::path bundle_;
    std::filesystem::path seal_;
    /// The next one of the bundle's files; and the one that is being read, if any is.
    std::filesystem::recursive_directory_iterator next_;
    std::ifstream file_;
    std::string name_;
    QCryptographicHash hash_{QCryptographicHash::Sha256};
    std::optional<Digests> digests_{Digests{}};
};

/// All at once.
std::optional<Digests> digestsOf(const std::string& bundle);

} // namespace simulator
