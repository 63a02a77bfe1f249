#pragma once

#include "Simulator1Proxy.h"
#include "tests/simulator/application/Asker.h"

#include <QDBusPendingCallWatcher>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace simulator::tests {

using Control = ComKelvraSimulator1ControlInterface;

/// A client that has the service do one thing after the other, and knows what is there as far as it was answered.
class Worker {
public:
    Worker() = default;
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    virtual ~Worker() = default;

    /// Asks for the next thing. Only after what was asked before has been answered, or is known to be lost.
    virtual void begin() = 0;
    /// Whether an answer came to what was asked.
    virtual bool look() = 0;
    /// The service is gone: from here on isAtRest() says whether nothing that was asked is still under way.
    virtual void knock() {}
    /// The machine was restarted, and nothing was asked since the last answer.
    virtual void restarted() {}
    virtual bool isAtRest() = 0;
    /// What this worker alone changes, as it is there now.
    virtual std::string found() = 0;

    const std::string& answered() const { return answered_; }
    /// Whether that is what the answers say, or what was asked last and not answered.
    bool explains(const std::string& state) const { return state == answered_ || state == asked_; }
    void goOnFrom(const std::string& state) { answered_ = asked_ = state; }
    /// What it has to say of itself when it does not understand.
    virtual std::string account() const { return "answered: " + answered_ + "\nasked: " + asked_ + '\n'; }

protected:
    void ask(std::string after) { asked_ = std::move(after); }
    void hear() { answered_ = asked_; }
    const std::string& asked() const { return asked_; }

private:
    std::string answered_;
    std::string asked_;
};

/// A method call under way.
class Call {
public:
    void make(const QDBusPendingCall& call) { watcher_ = std::make_unique<QDBusPendingCallWatcher>(call); }
    bool isUnderWay() const { return watcher_ != nullptr; }
    /// Whether it was answered just now; a service that dies answers nothing.
    bool look();

private:
    std::unique_ptr<QDBusPendingCallWatcher> watcher_;
};

/// Everybody who has the service do something at the same time: an application for each of two extensions, whose
/// person and machine are played at random, someone who moves the clock on, and someone who moves a switch.
class Load {
public:
    /// program: of the sample bundle. Connections to the bus: one for each who needs one.
    Load(unsigned seed, const QString& program, const QProcessEnvironment& environment,
         const std::vector<QDBusConnection>& buses);

    void begin();
    /// Goes on until so many answers came.
    [[nodiscard]] bool hears(int answers);
    /// The machine was restarted before anything was begun.
    void restarted();
    /// Asks who may be there, which starts the service if it is gone.
    void knock();
    /// Waits until nothing that was asked is under way any more.
    [[nodiscard]] bool comesToRest();
    /// Looks whether each finds what its answers explain, and goes on from there.
    void compare();

    std::size_t answers() const { return answers_; }
    /// What everybody has to say.
    std::string account() const;
    static constexpr std::size_t connections = 4;

private:
    std::mt19937 random_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::size_t answers_ = 0;
};

} // namespace simulator::tests
