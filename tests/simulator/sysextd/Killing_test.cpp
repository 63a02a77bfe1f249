// The service is killed again and again while many have it do something, and comes back each time.

#include "simulator/store/Store.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <algorithm>
#include <csignal>
#include <functional>
#include <random>
#include <thread>
#include <utility>

namespace simulator::tests {

namespace {

using Random = std::mt19937;

std::size_t pick(Random& random, std::size_t below) {
    return std::uniform_int_distribution<std::size_t>{0, below - 1}(random);
}

/// What is to be done, and what is there when it is done.
struct Step {
    QStringList words;
    QString after;
};

/// A thing that the service keeps, as a text: how it is in the beginning, what is done to it next, and how it is found.
struct Thing {
    QString first;
    std::function<Step(const QString& there, Random& random, int number)> next;
    std::function<QString(Control& control)> found;
};

/// In milliseconds.
Thing theClock() {
    const auto next = [](const QString& there, Random&, int) {
        return Step{{"advance", "1ms"}, QString::number(there.toLongLong() + 1)};
    };
    // "0.007 s\n" -> "7"
    const auto found = [](Control& control) {
        const QString said = control.Do({"clock"}, {}).value();
        return QString::number(said.section(' ', 0, 0).remove('.').toLongLong());
    };
    return {"0", next, found};
}

/// The value of a switch, which moves there and back.
Thing theSwitch() {
    const auto next = [](const QString& there, Random&, int) {
        const QString value = there == u"13" ? "11" : "13";
        return Step{{"switch", "refusal", value}, value};
    };
    const auto found = [](Control& control) {
        const QString said = control.Do({"switch", "refusal"}, {}).value();
        return said.section('\t', 1, 1);
    };
    return {"13", next, found};
}

/// What the person does with the extension.
Step stepWith(const QString& identifier, const QString& there, Random& random, const QString& newVersion) {
    const QString version = there.section(' ', 0, 0);
    if (there.endsWith(" disabled")) return {{"enable", identifier}, version + " enabled"};
    switch (there.isEmpty() ? 0 : pick(random, 3)) {
    case 0:
        return {{"install", identifier, "0", newVersion}, newVersion + " enabled"};
    case 1:
        return {{"disable", identifier}, version + " disabled"};
    default:
        return {{"uninstall", "-", identifier}, {}};
    }
}

/// The copy of an extension that is not on its way out, such as "7 enabled".
Thing theCopyOf(const QString& identifier) {
    const auto next = [identifier](const QString& there, Random& random, int number) {
        return stepWith(identifier, there, random, QString::number(number));
    };
    const auto found = [identifier](Control& control) {
        QStringList lines;
        for (const CopyEntry& copy : control.ListCopies().value()) {
            if (copy.identifier == identifier && copy.condition != u"uninstalling")
                lines += copy.version + ' ' + copy.condition;
        }
        return lines.join(", ");
    };
    return {{}, next, found};
}

/// A client that has the service do one thing after the other, and knows what is there as far as it was answered.
class Mover {
public:
    Mover(const QDBusConnection& bus, Random& random, Thing thing)
        : control_{serviceName, objectPath, bus}, random_{random}, thing_{std::move(thing)} {}

    /// Asks for the next thing. Only after what was asked before has been answered, or is known to be lost.
    void begin() {
        const Step step = thing_.next(answered_, random_, ++number_);
        asked_ = step.after;
        call_ = std::make_unique<QDBusPendingCallWatcher>(control_.Do(step.words, {}));
    }
    /// Whether an answer came to what was asked; a service that dies answers nothing.
    bool look() {
        if (!call_ || !call_->isFinished()) return false;
        const auto finished = std::exchange(call_, nullptr);
        if (!finished->isError()) answered_ = asked_;
        EXPECT_TRUE(!finished->isError() || finished->error().type() == QDBusError::NoReply);
        return !finished->isError();
    }
    /// The service is gone: whether nothing that was asked is still under way.
    bool isAtRest() {
        look();
        return call_ == nullptr;
    }
    /// Finds there what was answered last, or what was asked since, and goes on from there.
    void compare() {
        const QString there = thing_.found(control_);
        EXPECT_TRUE(there == answered_ || there == asked_)
            << QString{"found: %1\nanswered: %2\nasked: %3"}.arg(there, answered_, asked_).toStdString();
        answered_ = asked_ = there;
    }

private:
    Control control_;
    Random& random_;
    Thing thing_;
    std::unique_ptr<QDBusPendingCallWatcher> call_;
    QString answered_ = thing_.first;
    QString asked_ = thing_.first;
    int number_ = 0;
};

/// Whether a process is neither running nor waiting: stopped, or gone.
bool isStopped(qint64 process) {
    QFile status{QString{"/proc/%1/stat"}.arg(process)};
    if (!status.open(QIODevice::ReadOnly)) return true;
    const QByteArray line = status.readAll();
    return !QByteArray{"RSD"}.contains(line.at(line.lastIndexOf(')') + 2));
}

/// Four who have something done to the clock, a switch, and two extensions.
class TheServiceUnderLoad : public OnASimulatedMac, public testing::WithParamInterface<unsigned> {
protected:
    TheServiceUnderLoad() {
        for (const Thing& thing : {theClock(), theSwitch(), theCopyOf(camera), theCopyOf(driver)})
            movers_.push_back(std::make_unique<Mover>(mac.connect(), random_, thing));
    }

    void live() {
        if (pick(random_, 4) == 0) must(mac.control().Do({"restart"}, {}));
        each(&Mover::begin);
        ASSERT_TRUE(hear(pick(random_, 20)));
        ASSERT_NO_FATAL_FAILURE(kill());
        if (pick(random_, 10) == 0) {
            // Has a service there that may still be reading its store.
            mac.control().ListIdentifiers();
            ASSERT_TRUE(until([&] { return mac.connection().interface()->isServiceRegistered(serviceName).value(); }));
            ASSERT_NO_FATAL_FAILURE(kill());
        }
        ASSERT_TRUE(comesToRest());
        each(&Mover::compare);
    }

    std::size_t answers = 0;
    int kills = 0;

private:
    void each(void (Mover::*deed)()) {
        for (const auto& mover : movers_)
            (mover.get()->*deed)();
    }

    /// Goes on until so many answers came.
    bool hear(std::size_t count) {
        const std::size_t enough = answers + count;
        return until([&] {
            for (const auto& mover : movers_) {
                if (!mover->look()) continue;
                ++answers;
                mover->begin();
            }
            return answers >= enough;
        });
    }

    /// Waits until nothing that was asked is under way any more.
    bool comesToRest() {
        const auto isAtRest = [](const auto& mover) { return mover->isAtRest(); };
        return until([&] { return std::all_of(movers_.begin(), movers_.end(), isAtRest); });
    }

    /// Kills the service wherever it is. What it leaves on the disk is looked at before anyone can start it again.
    void kill() {
        const QString owner = mac.connection().interface()->serviceOwner(serviceName);
        const qint64 process = mac.connection().interface()->servicePid(owner).value();
        ASSERT_TRUE(sendSignal(process, SIGSTOP));
        while (!isStopped(process))
            std::this_thread::yield();
        const QString image = copyOfStore(mac.storeFile(), mac.folder());
        ASSERT_TRUE(sendSignal(process, SIGKILL));
        ASSERT_TRUE(until([&] { return mac.connection().interface()->serviceOwner(serviceName).value() != owner; }));
        ASSERT_NO_THROW(Store{image.toStdString()}.load());
        ++kills;
    }

    Random random_{GetParam()};
    std::vector<std::unique_ptr<Mover>> movers_;
};

TEST_P(TheServiceUnderLoad, LosesNothingThatWasAnsweredWheneverItIsKilled) {
    const int lives = qEnvironmentVariableIsSet("DRIVER_MANAGER_LONG") ? 250 : 25;
    while (kills < lives && !HasFailure())
        live();
    EXPECT_GT(answers, 4 * static_cast<std::size_t>(lives));
}

INSTANTIATE_TEST_SUITE_P(WithSeed, TheServiceUnderLoad, testing::Values(1U, 2U, 3U, 4U));

} // namespace

} // namespace simulator::tests
