#pragma once

#include <QFile>

namespace simulator {

/// Opens what lies there for reading if it is a file with contents of its own, through links too. Says whether it did.
/// A pipe, a socket or a device is none: reading it could wait for ever.
bool openRegularFile(QFile& file, const QString& path);

} // namespace simulator
