#include "simulator/disk/Seal.h"

#include <QFile>
#include <QSaveFile>

#include <system_error>

namespace simulator {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t pieceSize = 1048576;
constexpr auto sealFile = "_SimulatedSignature.plist";

} // namespace

std::string contentsOf(const std::string& bundle) {
    std::error_code none;
    const std::string contents = bundle + "/Contents";
    return fs::is_directory(contents, none) ? contents : bundle;
}

std::optional<Seal> readSeal(const std::string& bundle) {
    const auto list = PropertyList::read(contentsOf(bundle) + '/' + sealFile);
    if (!list || !list->isDictionary()) return std::nullopt;
    Seal seal;
    seal.team = (*list)["team"].text();
    seal.entitlements = (*list)["entitlements"].dictionary();
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
    QSaveFile file{QString::fromStdString(contentsOf(bundle) + '/' + sealFile)};
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(list.toXml())) >= 0;
    return isWritten && file.commit() ? std::string{} : file.errorString().toStdString();
}

Digestion::Digestion(const std::string& bundle) {
    std::error_code problem;
    bundle_ = fs::canonical(bundle, problem);
    seal_ = fs::path{contentsOf(bundle_)} / sealFile;
    if (!problem) next_ = fs::recursive_directory_iterator{bundle_, problem};
    if (problem) giveUp();
}

/// A file counts as a piece of its own however small it is, but so does a folder, and a link.
bool Digestion::goOn() {
    try {
        if (file_.is_open()) {
            read();
        } else if (next_ != fs::recursive_directory_iterator{}) {
            begin(*next_++);
        }
    } catch (const fs::filesystem_error&) {
        giveUp();
    }
    return file_.is_open() || next_ != fs::recursive_directory_iterator{};
}

void Digestion::begin(const fs::directory_entry& entry) {
    name_ = entry.path().lexically_relative(bundle_);
    hash_.reset();
    if (entry.is_symlink()) {
        hash_.addData(QByteArray::fromStdString(fs::read_symlink(entry.path())));
        digests_->emplace(name_, "link " + hash_.result().toHex().toStdString());
    } else if (entry.is_regular_file()) {
        if (entry.path() != seal_) file_.open(entry.path(), std::ios::binary);
    } else if (!entry.is_directory()) {
        giveUp();
    }
}

void Digestion::read() {
    std::string piece(pieceSize, '\0');
    file_.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    hash_.addData(QByteArray::fromRawData(piece.data(), file_.gcount()));
    if (file_) return;
    if (file_.bad()) return giveUp();
    digests_->emplace(name_, hash_.result().toHex().toStdString());
    file_.close();
}

void Digestion::giveUp() {
    digests_.reset();
    file_.close();
    next_ = {};
}

std::optional<Digests> digestsOf(const std::string& bundle) {
    Digestion digestion{bundle};
    while (digestion.goOn()) {
    }
    return digestion.digests();
}

} // namespace simulator
