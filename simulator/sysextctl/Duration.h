#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace simulator::ctl {

/// Reads a length of time as scenarios do: "90s", "1.5h", "250ms", seconds if there is no unit. Nothing if the text is
/// anything else.
std::optional<qint64> milliseconds(QStringView text);

/// Writes milliseconds as seconds with three decimals: "90.000".
QString inSeconds(qint64 milliseconds);

} // namespace simulator::ctl
