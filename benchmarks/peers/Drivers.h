#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>

// What the two screens show: the drivers, as the property list and the extension service have them.

/// The build of the application, from its property list.
QString readBuild(const QString& contents);

/// One driver, as its card shows it.
class Driver : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString icon MEMBER icon CONSTANT)
    Q_PROPERTY(QString state MEMBER state NOTIFY changed)
    Q_PROPERTY(bool enabled MEMBER enabled NOTIFY changed)
    Q_PROPERTY(QString action READ action NOTIFY changed)

public:
    Driver(QString identifier, QString build, QString icon, QString name);

    /// What its button says; empty if it has none.
    QString action() const;
    Q_INVOKABLE void ask(const QString& kind = "properties");
    void answer(const QDBusArgument& copies);

    QString identifier, build, icon, name;
    QString state = "Not installed";
    QString version;
    bool enabled = false;
    bool awaiting = false;

signals:
    void changed();
};

/// Both drivers and the banner over them.
class Drivers : public QObject {
    Q_OBJECT
    Q_PROPERTY(QList<QObject*> all READ all CONSTANT)
    Q_PROPERTY(QString banner READ banner NOTIFY changed)
    Q_PROPERTY(QString color READ color NOTIFY changed)
    Q_PROPERTY(bool ready READ ready NOTIFY changed)

public:
    explicit Drivers(const QString& contents);

    QList<QObject*> all() { return {&camera, &network}; }
    QString banner() const;
    QString color() const;
    bool ready() const { return camera.enabled && network.enabled; }
    bool awaiting() const { return camera.awaiting || network.awaiting; }

    Driver camera, network;

public slots:
    void foundProperties(const QDBusMessage& signal);

signals:
    void changed();
};
