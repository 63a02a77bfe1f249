#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace simulator::player {

/// A temporary folder. Another process makes it, and removes it when this object or this process ends, also if this
/// process is killed. Throws NotDone.
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

/// A bus of its own that starts a service on demand, with a store in a temporary folder. All of it ends with this
/// object or this process, also if this process is killed. Needs a QCoreApplication. Throws NotDone.
class PrivateBus {
public:
    /// programs: the folder that contains sysextd.
    explicit PrivateBus(const QString& programs);
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const QString& address() const { return address_; }
    QDBusConnection connection() const { return QDBusConnection{connectionName}; }
    /// Removed with the bus.
    const QString& folder() const { return folder_.path(); }
    /// The last line that the service wrote to standard error, or nothing.
    QString lastComplaint() const;

private:
    static constexpr auto connectionName = "a private bus";

    void start();
    QString fileNamed(const QString& name) const { return folder_.path() + u'/' + name; }

    ScratchFolder folder_;
    QProcess daemon_;
    QString address_;
};

/// Writes a file, and makes its folder if necessary. Throws NotDone.
void writeFile(const QString& path, const QByteArray& contents);

} // namespace simulator::player
