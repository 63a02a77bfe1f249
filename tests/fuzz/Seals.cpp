#include "simulator/disk/RealDisk.h"
#include "simulator/disk/Seal.h"
#include "tests/fuzz/Bytes.h"

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>

// Any tree of files in the place of an application: it is read, and holds what was sealed and nothing else.

namespace {

namespace fs = std::filesystem;
using tests::Bytes;
using tests::must;

constexpr auto extension = "Contents/Library/SystemExtensions/a.dext";

/// A folder in the application, or in the extension.
fs::path folderIn(Bytes& bytes, const fs::path& application) {
    const auto* const below = bytes.choice(2) == 0 ? "Contents" : extension;
    return bytes.choice(2) == 0 ? application / below : application / below / "Contents";
}

/// A file whose contents matter, or of any other name.
std::string nameIn(Bytes& bytes) {
    const std::size_t kind = bytes.choice(4);
    if (kind == 0) return "Info.plist";
    return kind == 1 ? "_SimulatedSignature.plist" : bytes.text('/').substr(0, 200);
}

void makeEntry(Bytes& bytes, const fs::path& application) {
    std::error_code refused;
    const fs::path folder = folderIn(bytes, application);
    fs::create_directories(folder, refused);
    const fs::path path = folder / nameIn(bytes);
    const std::size_t kind = bytes.choice(4);
    if (kind == 0) fs::create_directory(path, refused);
    if (kind == 1) fs::create_symlink(bytes.text('\0'), path, refused);
    if (kind > 1 && !fs::is_symlink(path, refused)) std::ofstream{path, std::ios::binary} << bytes.text('\0');
}

/// Whether it matches a seal made for it, and no longer does once it has a file more.
void mustMatchItsOwnSeal(const fs::path& bundle) {
    const auto digests = simulator::digestsOf(bundle);
    if (!digests || !simulator::writeSeal(bundle, {"TEAM", {}, *digests}).empty()) return;
    must(simulator::isAsSealed(bundle), "what was just sealed does not match its seal");
    std::ofstream{bundle / "one more file"} << "more";
    must(!simulator::isAsSealed(bundle), "a file that was added still matches the seal");
}

} // namespace

void tests::fuzz(Bytes bytes) {
    const QTemporaryDir folder;
    const fs::path application = fs::path{folder.path().toStdString()} / "An App.app";
    while (!bytes.isAtEnd())
        makeEntry(bytes, application);
    const simulator::RealDisk disk;
    if (const auto bundle = disk.read(application)) must(bundle->path == application, "a bundle lies elsewhere");
    if (fs::is_directory(application / extension)) mustMatchItsOwnSeal(application / extension);
}
