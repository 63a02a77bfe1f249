#include "platform/DispatchQueue.h"

#include <QCoreApplication>

#include <utility>

namespace platform {

void DispatchQueue::async(std::function<void()> work) const {
    auto* const application = QCoreApplication::instance();
    if (application) QMetaObject::invokeMethod(application, std::move(work), Qt::QueuedConnection);
}

} // namespace platform
