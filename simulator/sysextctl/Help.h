#pragma once

#include <QString>

namespace simulator::ctl {

/// The help of one verb, or of the whole program if it is empty. Expects a verb that there is.
QString help(const QString& verb);

} // namespace simulator::ctl
