#pragma once

#include <QString>

namespace simulator::ctl {

/// Writes the text to standard output at once. Says whether that succeeded.
[[nodiscard]] bool print(const QString& text);

} // namespace simulator::ctl
