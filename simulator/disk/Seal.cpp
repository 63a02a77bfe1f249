#include "simulator/disk/Seal.h"

#include "simulator/disk/BundleContents.h"
#include "simulator/disk/PropertyListFile.h"
#include "simulator/disk/RegularFile.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace simulator {

namespace {

constexpr auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;

std::string sealFileOf(const std::string& bundle) {
    return contentsOf(bundle) + "/_SimulatedSignature.plist";
}

/// A link to one is none.
bool isFolder(const QFileInfo& file) {
    return file.isDir() && !file.isSymLink();
}

/// As the link itself says it, which holds wherever the bundle is moved to.
std::optional<std::string> targetOf(const QFileInfo& link) {
    std::error_code problem;
    const auto target = std::filesystem::read_symlink(QFile::encodeName(link.filePath()).toStdString(), problem);
    if (problem) return std::nullopt;
    return target.string();
}

std::string hexOf(const QCryptographicHash& hash) {
    return hash.result().toHex().toStdString();
}

std::optional<std::string> digestOfLink(const QFileInfo& link) {
    const auto target = targetOf(link);
    if (!target) return std::nullopt;
    QCryptographicHash hash{QCryptographicHash::Sha256};
    hash.addData(QByteArray::fromStdString(*target));
    return "link " + hexOf(hash);
}

std::optional<std::string> digestOfFile(const QFileInfo& file) {
    QCryptographicHash hash{QCryptographicHash::Sha256};
    QFile contents;
    if (!openRegularFile(contents, file.filePath()) || !hash.addData(&contents)) return std::nullopt;
    return hexOf(hash);
}

std::optional<std::string> digestOf(const QFileInfo& file) {
    return file.isSymLink() ? digestOfLink(file) : digestOfFile(file);
}

} // namespace

std::optional<Seal> readSeal(const std::string& bundle) {
    const auto list = readPropertyList(sealFileOf(bundle));
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
    QSaveFile file{QString::fromStdString(sealFileOf(bundle))};
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(list.toXml())) >= 0;
    return isWritten && file.commit() ? std::string{} : file.errorString().toStdString();
}

std::optional<std::map<std::string, std::string>> digestsOf(const std::string& bundle) {
    const QDir root{QFileInfo{QString::fromStdString(bundle)}.absoluteFilePath()};
    const QString seal = root.relativeFilePath(QString::fromStdString(sealFileOf(root.path().toStdString())));
    std::map<std::string, std::string> digests;
    QDirIterator files{root.path(), everything, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        const QString name = root.relativeFilePath(files.next());
        if (isFolder(files.fileInfo()) || name == seal) continue;
        auto digest = digestOf(files.fileInfo());
        if (!digest) return std::nullopt;
        digests[name.toStdString()] = std::move(*digest);
    }
    return digests;
}

} // namespace simulator
