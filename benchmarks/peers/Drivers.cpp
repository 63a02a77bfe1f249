#include "benchmarks/peers/Drivers.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QFile>

#include <plist/plist.h>

#include <utility>

namespace {

const QString service = "com.kelvra.Simulator1";
const QString servicePath = "/com/kelvra/Simulator1";

} // namespace

QString readBuild(const QString& contents) {
    QFile list{contents + "/Info.plist"};
    if (!list.open(QIODevice::ReadOnly)) return {};
    const QByteArray bytes = list.readAll();
    plist_t root = nullptr;
    plist_from_xml(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &root);
    const QString build = plist_get_string_ptr(plist_dict_get_item(root, "CFBundleVersion"), nullptr);
    plist_free(root);
    return build;
}

Driver::Driver(QString identifier, QString build, QString icon, QString name)
    : identifier{std::move(identifier)}, build{std::move(build)}, icon{std::move(icon)}, name{std::move(name)} {
}

QString Driver::action() const {
    if (!enabled) return "Activate";
    return version.toLongLong() < build.toLongLong() ? "Upgrade" : "";
}

void Driver::ask(const QString& kind) {
    auto question = QDBusMessage::createMethodCall(service, servicePath, service, "Submit");
    question << identifier + "/" + kind << kind << identifier;
    QDBusConnection::sessionBus().asyncCall(question);
}

void Driver::answer(const QDBusArgument& copies) {
    enabled = awaiting = false;
    for (copies.beginArray(); !copies.atEnd();) {
        QString id, shortVersion, number;
        bool isEnabled, isAwaiting, isUninstalling;
        copies.beginStructure();
        copies >> id >> shortVersion >> number >> isEnabled >> isAwaiting >> isUninstalling;
        copies.endStructure();
        if (isEnabled) version = number;
        enabled |= isEnabled;
        awaiting |= isAwaiting;
        state = enabled ? "Enabled" : awaiting ? "Await approval" : isUninstalling ? "Uninstalling" : "";
    }
    emit changed();
}

Drivers::Drivers(const QString& contents)
    : camera{"com.kelvra.ip-camera.cmio", readBuild(contents), contents + "/Resources/VideoCamera", "Camera Driver"},
      network{"com.kelvra.driverkit.usb-to-poe", camera.build, contents + "/Resources/Ethernet", "Network Driver"} {
    QDBusConnection::sessionBus().connect(service, servicePath, service, "FoundProperties", this,
                                          SLOT(foundProperties(QDBusMessage)));
    for (Driver* driver : {&camera, &network}) {
        connect(driver, &Driver::changed, this, &Drivers::changed);
        driver->ask();
    }
}

QString Drivers::banner() const {
    if (ready()) return "Woohoo, you are all set!";
    return awaiting() ? "Open Privacy & Security in System Settings to allow the extensions."
                      : "Both drivers need to be activated to run the camera";
}

QString Drivers::color() const {
    if (ready()) return "#B6B77E";
    return awaiting() ? "#EB6E3D" : "#E6C669";
}

void Drivers::foundProperties(const QDBusMessage& signal) {
    for (Driver* driver : {&camera, &network})
        if (signal.arguments()[0].toString().startsWith(driver->identifier + "/"))
            driver->answer(signal.arguments()[1].value<QDBusArgument>());
}
