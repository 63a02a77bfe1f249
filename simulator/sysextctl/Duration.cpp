#include "simulator/sysextctl/Duration.h"

#include "simulator/scenario/Duration.h"

namespace simulator::ctl {

std::optional<qint64> milliseconds(QStringView text) {
    return scenario::millisecondsOf(text.toUtf8().toStdString());
}

QString inSeconds(qint64 milliseconds) {
    return QString::number(static_cast<double>(milliseconds) / 1000, 'f', 3);
}

} // namespace simulator::ctl
