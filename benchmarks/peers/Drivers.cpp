#include "benchmarks/peers/Drivers.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QFile>

#include <plist/plist.h>

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

void ask(const QString& kind, const QString& identifier) {
    auto question = QDBusMessage::createMethodCall(service, servicePath, service, "Submit");
    question << identifier + "/" + kind << kind << identifier;
    QDBusConnection::sessionBus().asyncCall(question);
}

Driver::Driver(const QString& identifier, const QString& name, const QString& iconPath, const QString& build)
    : identifier{identifier}, name{name}, iconPath{iconPath}, build{build} {
    QDBusConnection::sessionBus().connect(service, servicePath, service, "FoundProperties", this,
                                          SLOT(foundProperties(QDBusMessage)));
    ask("properties");
}

QString Driver::action() const {
    if (!enabled) return "Activate";
    return version.toLongLong() < build.toLongLong() ? "Upgrade" : "";
}

void Driver::foundProperties(const QDBusMessage& signal) {
    if (!signal.arguments()[0].toString().startsWith(identifier + "/")) return;
    const auto copies = signal.arguments()[1].value<QDBusArgument>();
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
    : resources{contents + "/Resources/"},
      camera{"com.kelvra.ip-camera.cmio", "Camera Driver", resources + "VideoCamera", readBuild(contents)},
      network{"com.kelvra.driverkit.usb-to-poe", "Network Driver", resources + "Ethernet", camera.build} {
    connect(&camera, &Driver::changed, this, &Drivers::changed);
    connect(&network, &Driver::changed, this, &Drivers::changed);
}

QString Drivers::banner() const {
    if (ready()) return "Woohoo, you are all set!";
    return awaiting() ? "Open Privacy & Security in System Settings to allow the extensions."
                      : "Both drivers need to be activated to run the camera";
}
