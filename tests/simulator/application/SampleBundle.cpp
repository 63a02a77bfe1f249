#include "tests/simulator/application/SampleBundle.h"

#include "simulator/disk/Seal.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace simulator::tests {

namespace {

using List = PropertyList::Dictionary;
using Texts = PropertyList::Array;

constexpr auto team = "KELVRA0001";

void writeList(const QString& path, const List& list) {
    QDir{}.mkpath(QFileInfo{path}.path());
    QFile file{path};
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error{"cannot write " + path.toStdString()};
    file.write(QByteArray::fromStdString(PropertyList{list}.toXml()));
}

void sealBundle(const QString& path, const List& entitlements) {
    const std::string bundle = path.toStdString();
    const std::string problem = writeSeal(bundle, {team, entitlements, digestsOf(bundle).value()});
    if (!problem.empty()) throw std::runtime_error{problem};
}

List infoOf(const std::string& identifier, const char* name) {
    return {{"CFBundleIdentifier", identifier},
            {"CFBundleName", name},
            {"CFBundleShortVersionString", "2.1"},
            {"CFBundleVersion", "2105"}};
}

void makeExtensions(const QString& folder) {
    const QString cameraPath = folder + camera + ".systemextension";
    List cameraInfo = infoOf(camera, "Camera");
    cameraInfo["NSSystemExtensionUsageDescription"] = "Shows the camera's picture.";
    cameraInfo["CMIOExtension"] = List{{"CMIOExtensionMachServiceName", "KELVRA0001.group.camera"}};
    writeList(cameraPath + "/Contents/Info.plist", cameraInfo);
    sealBundle(cameraPath, {{"com.apple.security.application-groups", Texts{"KELVRA0001.group"}}});

    const QString driverPath = folder + driver + ".dext";
    List driverInfo = infoOf(driver, "Network");
    driverInfo["OSBundleUsageDescription"] = "Connects the camera.";
    writeList(driverPath + "/Contents/Info.plist", driverInfo);
    sealBundle(driverPath, {});
}

} // namespace

QString makeSampleBundle(const QString& path, const QString& program, const QString& identifier) {
    writeList(path + "/Contents/Info.plist", infoOf(identifier.toStdString(), "Driver Manager"));
    makeExtensions(path + "/Contents/Library/SystemExtensions/");
    const QString copy = path + "/Contents/MacOS/" + QFileInfo{program}.fileName();
    QDir{}.mkpath(QFileInfo{copy}.path());
    if (!QFile::copy(program, copy)) throw std::runtime_error{"cannot copy " + program.toStdString()};
    sealBundle(path, {{"com.apple.developer.system-extension.install", true}});
    return copy;
}

} // namespace simulator::tests
