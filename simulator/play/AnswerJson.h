#pragma once

#include "simulator/core/Answer.h"

#include <QDBusMessage>
#include <QJsonObject>

namespace simulator::play {

/// A signal of the service to its client, as an application passes it on.
QJsonObject jsonOf(const QDBusMessage& signal);
/// The answer in it; nothing is said in one that is none.
AnswerBody answerOf(const QJsonObject& json);

} // namespace simulator::play
