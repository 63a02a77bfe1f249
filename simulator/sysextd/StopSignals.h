#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace simulator {

/// Tells of SIGTERM and SIGINT in the event loop. To be made after the application object, before
/// the process has a second thread, and once.
class StopSignals : public QObject {
    Q_OBJECT

public:
    /// Throws std::runtime_error.
    StopSignals();
    ~StopSignals() override;

signals:
    void came();

private:
    int descriptor_;
    QSocketNotifier notifier_;
};

} // namespace simulator
