#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QVariant>

#include <vector>

namespace tests {

/// One copy as it goes over the bus.
struct CopyOnTheBus {
    QString identifier;
    QString shortVersion;
    QString version;
    bool enabled = false;
    bool awaiting = false;
    bool uninstalling = false;
};

/// A service on a bus that does what a test says and nothing by itself: it writes calls down, and sends signals with
/// whatever arguments it is given.
class ScriptedService final : public QDBusVirtualObject {
public:
    /// One that owns nothing is a stranger, whom no client has to believe.
    enum class Owns { theName, nothing };
    /// What becomes of a call: an empty reply, an error, or none until take().
    enum class Calls { areTaken, areRefused, areLeftOpen };

    /// On a connection of its own; throws std::runtime_error where there is no bus or the name is taken.
    explicit ScriptedService(const QString& busAddress, Owns owns = Owns::theName);
    ScriptedService(const ScriptedService&) = delete;
    ScriptedService& operator=(const ScriptedService&) = delete;
    ~ScriptedService() override;

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    /// From now on calls get this.
    void setCalls(const Calls calls) { calls_ = calls; }
    /// From now on each call is answered with Finished, its token and result 0, before its reply, and both have
    /// reached the client when it gets to see the first.
    void finishBeforeReplying() { finishesFirst_ = true; }
    /// Takes a call that was left open.
    void take(std::size_t call) const { connection_.send(received_.at(call).createReply()); }
    /// Takes and gives up the service's name on the bus, and stays connected.
    void takeName();
    void releaseName();
    /// Leaves the bus, as a process that dies does.
    void die();

    /// Every call so far, in the order in which they came; calls are named by their place there, from 0.
    const std::vector<QDBusMessage>& calls() const { return received_; }
    /// The token by which the client knows the request of a call.
    QString token(std::size_t call) const { return received_.at(call).arguments().at(0).toString(); }
    /// The unique name of whoever called first; there must have been a call.
    QString client() const { return received_.at(0).service(); }

    /// To the client alone; the first argument is the token.
    void signal(const QString& client, const QString& member, const QVariantList& arguments) const;
    void signal(const QString& member, const QVariantList& arguments) const { signal(client(), member, arguments); }
    /// To everyone.
    void broadcast(const QString& member, const QVariantList& arguments = {}) const;
    /// Tells a client, as only the bus may, that the name went from one connection to another.
    void forgeOwnerChange(const QString& client, const QString& from, const QString& to) const;
    QString uniqueName() const { return connection_.baseService(); }
    /// Returns once the bus has passed on all that was sent.
    void flush() const;

private:
    QString connectionName_;
    QDBusConnection connection_;
    std::vector<QDBusMessage> received_;
    Calls calls_ = Calls::areTaken;
    bool finishesFirst_ = false;
};

/// A copy, or a list of them, as an argument of a signal.
QVariant onTheBus(const CopyOnTheBus& copy);
QVariant onTheBus(const QList<CopyOnTheBus>& copies);

} // namespace tests
