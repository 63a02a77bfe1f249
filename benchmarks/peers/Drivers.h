#pragma once

#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>

// What the screens show: the drivers, as the property list and the extension service have them.

/// The build of the application, from the property list of its bundle.
QString readBuild(const QString& contents);

/// Sends a request to the service: "activation", "deactivation" or "properties".
void ask(const QString& kind, const QString& identifier);

/// One driver, as its card shows it.
class Driver : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString icon READ icon NOTIFY changed)
    Q_PROPERTY(QString state MEMBER state NOTIFY changed)
    Q_PROPERTY(bool enabled MEMBER enabled NOTIFY changed)
    Q_PROPERTY(QString action READ action NOTIFY changed)

public:
    Driver(const QString& identifier, const QString& name, const QString& iconPath, const QString& build);

    QString icon() const { return iconPath + (enabled ? "Dark.svg" : ".svg"); }
    /// What its button says; empty if it has none.
    QString action() const;
    Q_INVOKABLE void ask(const QString& kind) { ::ask(kind, identifier); }

    const QString identifier, name, iconPath, build;
    QString state = "Not installed", version;
    bool enabled = false, awaiting = false;

public slots:
    void foundProperties(const QDBusMessage& signal);

signals:
    void changed();
};

/// Both drivers and the banner over them.
class Drivers : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<QObject*> all READ all CONSTANT)
    Q_PROPERTY(QString icon READ icon NOTIFY changed)
    Q_PROPERTY(QString banner READ banner NOTIFY changed)
    Q_PROPERTY(QString color READ color NOTIFY changed)

public:
    explicit Drivers(const QString& contents);

    QList<QObject*> all() { return {&camera, &network}; }
    bool ready() const { return camera.enabled && network.enabled; }
    bool awaiting() const { return camera.awaiting || network.awaiting; }
    QString icon() const { return resources + (ready() ? "checkmark" : "exclamationmark") + ".circle.fill.svg"; }
    QString banner() const;
    QString color() const { return ready() ? "#B6B77E" : awaiting() ? "#EB6E3D" : "#E6C669"; }

    const QString resources;
    Driver camera, network;

signals:
    void changed();
};
