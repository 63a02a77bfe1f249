#include "simulator/disk/PropertyListFile.h"

#include <QFile>

namespace simulator {

namespace {

constexpr qint64 longest = 1048576;

} // namespace

std::optional<PropertyList> readPropertyList(const std::string& path) {
    QFile file{QString::fromStdString(path)};
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QByteArray bytes = file.read(longest + 1);
    if (bytes.size() > longest) return std::nullopt;
    return PropertyList::parse(bytes.toStdString());
}

} // namespace simulator
