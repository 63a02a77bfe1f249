#pragma once

#include <QObject>

#include <memory>

namespace platform {

/// Owned, and deleted by the main loop: what may go while an event of its own is being handled.
struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

template <typename Object>
using DeletedLater = std::unique_ptr<Object, DeleteLater>;

} // namespace platform
