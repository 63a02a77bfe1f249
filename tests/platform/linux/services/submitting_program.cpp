#include "platform/SystemExtensions.h"

#include "RecordingDelegate.h"

#include <QCoreApplication>

#include <cstdio>

// Asks the shared manager for the copies of "camera", says what it hears, and ends.

int main(int argc, char** argv) {
    const QCoreApplication application{argc, argv};
    const auto delegate = std::make_shared<tests::RecordingDelegate>();
    delegate->onHearing = [](const std::string& line) {
        std::printf("%s\n", line.c_str());
        QCoreApplication::quit();
    };
    const auto request =
        platform::OSSystemExtensionRequest::propertiesRequestForExtension("camera", platform::DispatchQueue::main());
    request->setDelegate(delegate);
    platform::OSSystemExtensionManager::sharedManager().submitRequest(request);
    return QCoreApplication::exec();
}
