#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace simulator::player {

/// A temporary folder. It goes with this object, and also with this process, however that ends: another makes it, waits
/// until it hears no more of this one, and removes it. Throws NotDone.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const QString& path() const { return path_; }

private:
    QProcess keeper_;
    QString path_;
};

/// A bus and a service of its own, with a store of its own, in a temporary folder; all of it goes when this goes, or
/// when this process is killed. Whoever calls the service first starts it. Needs a QCoreApplication. Throws NotDone.
class PrivateBus {
public:
    /// programs: the folder in which sysextd lies.
    explicit PrivateBus(const QString& programs);
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const QString& address() const { return address_; }
    QDBusConnection connection() const { return QDBusConnection{connectionName}; }
    /// A folder for whatever else goes with it.
    const QString& folder() const { return folder_.path(); }
    /// What the service wrote last to its standard error; empty if that is nothing.
    QString lastComplaint() const;

private:
    static constexpr auto connectionName = "a private bus";

    void describe(const QString& programs);
    void start();
    QString fileNamed(const QString& name) const { return folder_.path() + u'/' + name; }

    ScratchFolder folder_;
    QProcess daemon_;
    QString address_;
};

/// Puts a text into a file, whose folder is made where it is missing. Throws NotDone.
void writeFile(const QString& path, const QByteArray& contents);

} // namespace simulator::player
