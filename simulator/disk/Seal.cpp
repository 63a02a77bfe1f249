#include "simulator/disk/Seal.h"

#include "simulator/disk/PropertyListFile.h"
#include "simulator/disk/RegularFile.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QSaveFile>

namespace simulator {

namespace {

constexpr auto sealFile = "Contents/_SimulatedSignature.plist";

std::optional<std::string> digestOf(const QFileInfo& file) {
    QCryptographicHash hash{QCryptographicHash::Sha256};
    if (file.isSymLink()) {
        hash.addData(file.symLinkTarget().toUtf8());
    } else {
        QFile contents;
        if (!openRegularFile(contents, file.filePath()) || !hash.addData(&contents)) return std::nullopt;
    }
    return hash.result().toHex().toStdString();
}

} // namespace

std::optional<Seal> readSeal(const std::string& bundle) {
    const auto list = readPropertyList(bundle + "/" + sealFile);
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
    QSaveFile file{QString::fromStdString(bundle + "/" + sealFile)};
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(QByteArray::fromStdString(list.toXml())) >= 0;
    return isWritten && file.commit() ? std::string{} : file.errorString().toStdString();
}

std::optional<std::map<std::string, std::string>> digestsOf(const std::string& bundle) {
    const QDir root{QFileInfo{QString::fromStdString(bundle)}.absoluteFilePath()};
    std::map<std::string, std::string> digests;
    QDirIterator files{root.path(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories};
    while (files.hasNext()) {
        const QString path = files.next();
        const std::string name = root.relativeFilePath(path).toStdString();
        if (name == sealFile) continue;
        auto digest = digestOf(files.fileInfo());
        if (!digest) return std::nullopt;
        digests[name] = std::move(*digest);
    }
    return digests;
}

} // namespace simulator
