#include "platform/DispatchQueue.h"

#include <QCoreApplication>

#include <utility>

namespace platform {

void DispatchQueue::async(std::function<void()> work) const {
    if (auto* const application = QCoreApplication::instance()) {
        QMetaObject::invokeMethod(application, std::move(work), Qt::QueuedConnection);
    }
}

} // namespace platform
