#pragma once

#include "simulator/core/Machine.h"
#include "simulator/disk/RealDisk.h"
#include "simulator/store/Store.h"

#include <QObject>
#include <QThreadPool>

#include <cstdint>
#include <functional>
#include <set>
#include <string>

namespace simulator {

/// The machine, its store, and its steps. Each change is in the store before a signal tells of it. If the store fails,
/// the process ends with one line on standard error and sends nothing.
class Service : public QObject {
    Q_OBJECT

public:
    /// Throws StoreFailure.
    explicit Service(const std::string& storeFile);

    const Machine& machine() const { return machine_; }
    /// Acts on the machine. The result is settled later, together with those of the calls that wait already. The steps
    /// that follow are taken after that, one per turn of the event loop.
    Verdict perform(const std::function<Verdict(Machine&)>& deed);
    /// Stores what was performed since the last time, in one transaction, and tells of it. To be called before anyone
    /// is shown the machine.
    void settle();

signals:
    void answered(const simulator::Answer& answer);
    void happened(const simulator::Event& event);
    void changed();
    void restarting();
    /// All that was performed is in the store.
    void settled();
    /// The process ends at once when this returns; what was sent before must be on the bus by then.
    void dying();

private:
    void step();
    void stepLater();
    /// On another thread, because it reads all of the extension's files.
    void check(const SealToCheck& seal);
    void keep(const std::set<std::int64_t>& touched);

    Store store_;
    RealDisk disk_;
    Machine machine_;
    bool isTurnDue_ = false;
    QThreadPool checks_;
};

} // namespace simulator
