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

/// The machine, its store and its steps. Nothing is said before it is kept: each signal comes after the store has the
/// change that it tells of. Where the store fails, the process ends with one line on standard error, and no answer is
/// given.
class Service : public QObject {
    Q_OBJECT

public:
    /// Throws StoreFailure.
    explicit Service(const std::string& storeFile);

    const Machine& machine() const { return machine_; }
    /// Does something to the machine and keeps what came of it. The steps that follow are taken later, one in each
    /// turn of the event loop.
    Verdict perform(const std::function<Verdict(Machine&)>& deed);

signals:
    void answered(const simulator::Answer& answer);
    void happened(const simulator::Event& event);
    void changed();
    void restarting();
    /// The process ends without a goodbye once this returns. What was said before must be on its way.
    void dying();

private:
    void step();
    void stepLater();
    void settle();
    /// On a thread of its own: it reads all of an extension's files, and nothing else waits for that.
    void check(const SealToCheck& seal);
    void keep(const std::set<std::int64_t>& touched);

    Store store_;
    RealDisk disk_;
    Machine machine_;
    bool isStepping_ = false;
    QThreadPool checks_;
};

} // namespace simulator
