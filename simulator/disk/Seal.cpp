#include "simulator/disk/Seal.h"

#include <QCryptographicHash>
#include <QFile>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace simulator {

namespace {

namespace fs = std::filesystem;

constexpr auto sealFile = "_SimulatedSignature.plist";

std::string hexOf(const QCryptographicHash& hash) {
    return hash.result().toHex().toStdString();
}

/// Of a link the target as the link itself says it, which holds wherever the bundle is moved to. Throws
/// filesystem_error.
std::string digestOf(const fs::directory_entry& entry) {
    QCryptographicHash hash{QCryptographicHash::Sha256};
    if (entry.is_symlink()) {
        hash.addData(QByteArray::fromStdString(fs::read_symlink(entry.path())));
        return "link " + hexOf(hash);
    }
    QFile file{entry.path()};
    const bool isRead = entry.is_regular_file() && file.open(QIODevice::ReadOnly) && hash.addData(&file);
    if (!isRead) throw fs::filesystem_error{"cannot be read", std::make_error_code(std::errc::io_error)};
    return hexOf(hash);
}

} // namespace

std::string contentsOf(const std::string& bundle) {
    std::error_code none;
    const std::string contents = bundle + "/Contents";
    return fs::is_directory(contents, none) ? contents : bundle;
}

std::optional<Seal> readSeal(const std::string& bundle) {
    const auto list = PropertyList::read(contentsOf(bundle) + '/' + sealFile);
    if (!list || !list->is<PropertyList::Dictionary>()) return std::nullopt;
    Seal seal{(*list)["team"].text(), (*list)["entitlements"], {}};
    for (const auto& [path, digest] : (*list)["files"].dictionary())
        seal.files[path] = digest.text();
    return seal;
}

std::string writeSeal(const std::string& bundle, const Seal& seal) {
    PropertyList::Dictionary files;
    for (const auto& [path, digest] : seal.files)
        files[path] = digest;
    const PropertyList list{
        PropertyList::Dictionary{{"team", seal.team}, {"entitlements", seal.entitlements}, {"files", files}}};
    const std::string path = contentsOf(bundle) + '/' + sealFile;
    std::error_code none;
    if (fs::is_symlink(path, none)) fs::remove(path, none); // or else it is written where the link leads
    QSaveFile file{QString::fromStdString(path)};
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(list.toXml())) >= 0;
    return isWritten && file.commit() ? std::string{} : file.errorString().toStdString();
}

std::optional<Digests> digestsOf(const std::string& bundle) {
    try {
        const fs::path root = fs::canonical(bundle);
        const fs::path seal = fs::path{contentsOf(root)} / sealFile;
        Digests digests;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator{root}) {
            const bool isFolder = entry.is_directory() && !entry.is_symlink();
            if (isFolder || entry.path() == seal) continue;
            digests[entry.path().lexically_relative(root)] = digestOf(entry);
        }
        return digests;
    } catch (const fs::filesystem_error&) {
        return std::nullopt;
    }
}

} // namespace simulator
