#include "platform/Bundle.h"
#include "tests/support/Listener.h"

#include <QCoreApplication>

#include <cstdio>

// A program in a bundle. With the argument "bundle", it prints its main bundle. Otherwise it asks the shared manager
// for the copies of "camera", prints the answer, and ends.

namespace {

int tellMainBundle() {
    const auto& bundle = platform::NSBundle::mainBundle();
    const auto* const dictionary = bundle.infoDictionary();
    if (!dictionary) return 1;
    const auto version = dictionary->at("CFBundleVersion").value();
    std::printf("%s of %s\n", version.c_str(), bundle.infoFile().c_str());
    return 0;
}

int askSharedManager(int& argc, char** argv) {
    const QCoreApplication application{argc, argv};
    tests::Record record;
    const auto listener = std::make_shared<tests::Listener>("camera", record);
    record.onLine = [&record] {
        std::printf("%s\n", record.lines.back().c_str());
        QCoreApplication::quit();
    };
    const auto request =
        platform::OSSystemExtensionRequest::propertiesRequestForExtension("camera", platform::DispatchQueue::main());
    request->setDelegate(listener);
    platform::OSSystemExtensionManager::sharedManager().submitRequest(request);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    return argc > 1 && std::string{argv[1]} == "bundle" ? tellMainBundle() : askSharedManager(argc, argv);
}
