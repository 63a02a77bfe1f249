#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QStringList>

namespace simulator::ctl {

/// One JSON array of objects, one object a line, so that a script can read it whole and a person line by line.
template <typename Entry>
QString jsonLines(const QList<Entry>& entries, QJsonObject (*object)(const Entry&)) {
    QStringList lines;
    for (const auto& entry : entries)
        lines += QString::fromUtf8(QJsonDocument{object(entry)}.toJson(QJsonDocument::Compact));
    return lines.isEmpty() ? QStringLiteral("[]\n") : QStringLiteral("[\n%1\n]\n").arg(lines.join(",\n"));
}

} // namespace simulator::ctl
