#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QVariant>

#include <vector>

namespace tests {

/// A copy as it is sent over the bus.
struct CopyOnTheBus {
    QString identifier;
    QString shortVersion;
    QString version;
    bool enabled = false;
    bool awaiting = false;
    bool uninstalling = false;
};

/// A scripted service on a bus: it records calls, answers as a test tells it, and sends signals with any arguments.
class ScriptedService final : public QDBusVirtualObject {
public:
    /// One that does not own the name is a stranger, which clients must ignore.
    enum class Owns { theName, nothing };
    /// How it replies to a call: with nothing, with an error, or not until take().
    enum class Calls { areTaken, areRefused, areLeftOpen };

    /// Uses its own connection; throws std::runtime_error if there is no bus or the name is taken.
    explicit ScriptedService(const QString& busAddress, Owns owns = Owns::theName);
    ~ScriptedService() override;

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// Sets the reply to later calls.
    void setCalls(const Calls calls) { calls_ = calls; }
    /// From now on each call is answered with Finished, its token and result 0, before its reply, and both have
    /// reached the client when it gets to see the first.
    void finishBeforeReplying() { finishesFirst_ = true; }
    /// Replies to a call that is still open.
    void take(std::size_t call) const { connection_.send(received_.at(call).createReply()); }
    /// Acquires and releases the service's name. It stays connected.
    void takeName();
    void releaseName();
    /// Leaves the bus, as a crashed process does.
    void die();

    /// Every call so far, in order. Calls are numbered from 0.
    const std::vector<QDBusMessage>& calls() const { return received_; }
    /// The client's token for the request of a call.
    QString token(std::size_t call) const { return received_.at(call).arguments().at(0).toString(); }
    /// The unique name of the first caller; there must have been a call.
    QString client() const { return received_.at(0).service(); }

    /// Sends a signal only to the client. The first argument is the token.
    void signal(const QString& client, const QString& member, const QVariantList& arguments) const;
    void signal(const QString& member, const QVariantList& arguments) const { signal(client(), member, arguments); }
    /// Sends a signal to everyone.
    void broadcast(const QString& member, const QVariantList& arguments = {}) const;
    /// Tells a client that the name has a new owner, as only the bus may.
    void forgeOwnerChange(const QString& client, const QString& from, const QString& to) const;
    QString uniqueName() const { return connection_.baseService(); }
    /// Returns once the bus has forwarded everything that was sent.
    void flush() const;

private:
    QString connectionName_;
    QDBusConnection connection_;
    std::vector<QDBusMessage> received_;
    Calls calls_ = Calls::areTaken;
    bool finishesFirst_ = false;
};

/// A copy or a list of copies as an argument of a signal.
QVariant onTheBus(const CopyOnTheBus& copy);
QVariant onTheBus(const QList<CopyOnTheBus>& copies);

} // namespace tests
