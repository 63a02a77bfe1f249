#pragma once

#include "simulator/player/Mac.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

namespace simulator::player {

/// Writes a bundle to a folder of the real disk and replaces what is there. Reading it yields the same description,
/// also of a faulty bundle; the path in the description is ignored. Its program is a copy of program. Throws NotDone.
void writeBundle(const BundleOnDisk& bundle, const QString& folder, const QString& program);

/// The path of the program of a bundle.
QString programOf(const QString& folder);

/// The messages between the player and an application: one line of words each.
QByteArray lineOf(const QStringList& words);
QStringList wordsIn(const QByteArray& line);

/// A Mac on a bus of its own. Applications are real bundles in a temporary folder, which stands for the disk, and real
/// processes that run in them; the service identifies the caller itself. programs: the folder that contains sysextd and
/// submit. command: what startCommand() starts; with one, the folder of its bundle counts as /Applications, too.
/// timeout: how long await() waits, in milliseconds. Needs a QCoreApplication. Throws NotDone.
std::unique_ptr<Mac> newBusMac(const QString& programs, const QStringList& command, qint64 timeout);

} // namespace simulator::player
