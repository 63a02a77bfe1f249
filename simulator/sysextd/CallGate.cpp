#include "simulator/sysextd/CallGate.h"

#include "simulator/core/Limits.h"

#include <QMetaObject>

namespace simulator {

/// Events are handled in the order in which they were posted: the count begins anew after every call that waits now.
bool CallGate::admits(const QString& client) {
    if (counts_.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this] { counts_.clear(); }, Qt::QueuedConnection);
    }
    return ++counts_[client] <= limits::callsAtOnce;
}

} // namespace simulator
