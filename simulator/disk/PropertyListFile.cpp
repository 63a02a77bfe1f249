#include "simulator/disk/PropertyListFile.h"

#include "simulator/disk/RegularFile.h"

#include <QFile>

namespace simulator {

namespace {

constexpr qint64 longest = 1048576;

} // namespace

std::optional<PropertyList> readPropertyList(const std::string& path) {
    QFile file;
    if (!openRegularFile(file, QString::fromStdString(path))) return std::nullopt;
    const QByteArray bytes = file.read(longest + 1);
    if (bytes.size() > longest) return std::nullopt;
    return PropertyList::parse(bytes.toStdString());
}

} // namespace simulator
