#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace simulator::ctl {

/// Reads "90s", "1.5h", "250ms": a number that is not negative and one of ms, s, m, h, d; seconds if there is none.
/// Yields whole milliseconds, at most a thousand years of them; nothing if the text is anything else.
std::optional<qint64> milliseconds(QStringView text);

/// Writes milliseconds as seconds with three decimals: "90.000".
QString inSeconds(qint64 milliseconds);

} // namespace simulator::ctl
