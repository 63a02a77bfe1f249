#pragma once

#include <QString>

namespace simulator {

/// Says whether Qt notes no more than that the service came or went while its owner was asked for. It has the right
/// owner by then, and nobody who reads the note could do anything about it.
bool isNoteOfOwnerRace(const QString& message);

/// From here on such notes are not printed; whatever else Qt says is. Called once, first in main.
void keepOwnerRacesQuiet();

} // namespace simulator
