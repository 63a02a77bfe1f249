#pragma once

#include <QString>

namespace simulator::ctl {

/// The text with every control character (line ends and tabs too) replaced by a space, so that a text from outside can
/// neither break a line nor move a column.
QString oneLine(QString text);

} // namespace simulator::ctl
