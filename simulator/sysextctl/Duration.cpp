#include "simulator/sysextctl/Duration.h"

#include <QRegularExpression>

#include <cmath>

namespace simulator::ctl {

namespace {

constexpr double longest = 1000.0 * 366 * 24 * 60 * 60 * 1000;

double unitInMilliseconds(QStringView unit) {
    if (unit == u"ms") return 1;
    if (unit == u"m") return 60.0 * 1000;
    if (unit == u"h") return 60.0 * 60 * 1000;
    if (unit == u"d") return 24.0 * 60 * 60 * 1000;
    return 1000;
}

} // namespace

std::optional<qint64> milliseconds(QStringView text) {
    static const QRegularExpression form{QStringLiteral("\\A([0-9]+(?:\\.[0-9]+)?)(ms|s|m|h|d)?\\z")};
    const auto match = form.match(text.toString());
    if (!match.hasMatch()) return std::nullopt;
    const auto length = match.capturedView(1).toDouble() * unitInMilliseconds(match.capturedView(2));
    if (!(length <= longest)) return std::nullopt;
    return static_cast<qint64>(std::llround(length));
}

QString inSeconds(qint64 milliseconds) {
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 3);
}

} // namespace simulator::ctl
