#pragma once

#include <QHash>
#include <QObject>
#include <QString>

namespace simulator {

/// Keeps one client from taking all of the service's time: of the calls that a client has waiting at once, it lets
/// through limits::callsAtOnce. Waiting at once are those that come before the event loop turns.
class CallGate : public QObject {
    Q_OBJECT

public:
    /// Counts a call and answers whether it is let through.
    [[nodiscard]] bool admits(const QString& client);

private:
    QHash<QString, std::size_t> counts_;
};

} // namespace simulator
