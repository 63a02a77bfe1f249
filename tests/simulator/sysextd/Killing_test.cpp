// The service is killed again and again while many have it do something, and comes back each time.

#include "simulator/store/Store.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <algorithm>
#include <csignal>
#include <random>
#include <thread>
#include <utility>

namespace simulator::tests {

namespace {

using Random = std::mt19937;

std::size_t pick(Random& random, std::size_t below) {
    return std::uniform_int_distribution<std::size_t>{0, below - 1}(random);
}

/// A client that has the service do one thing after the other, and knows what is there as far as it was answered.
class Mover {
public:
    /// state: what is there in the beginning, of what it alone changes.
    Mover(const QDBusConnection& bus, const std::string& state) : control_{serviceName, objectPath, bus} {
        goOnFrom(state);
    }
    Mover(const Mover&) = delete;
    Mover& operator=(const Mover&) = delete;
    virtual ~Mover() = default;

    /// Asks for the next thing. Only after what was asked before has been answered, or is known to be lost.
    virtual void begin() = 0;
    /// Whether an answer came to what was asked; a service that dies answers nothing.
    virtual bool look() {
        if (!call_ || !call_->isFinished()) return false;
        const auto finished = std::exchange(call_, nullptr);
        if (!finished->isError()) hear();
        EXPECT_TRUE(!finished->isError() || finished->error().type() == QDBusError::NoReply);
        return !finished->isError();
    }
    /// The service is gone: from here on isAtRest() says whether nothing that was asked is still under way.
    virtual void knock() {}
    /// The machine was restarted, and nothing was asked since the last answer.
    virtual void restarted() {}
    virtual bool isAtRest() {
        look();
        return call_ == nullptr;
    }
    /// What is there now.
    virtual std::string found() = 0;

    /// Finds there what was answered last, or what was asked since, and goes on from there.
    void compare() {
        const std::string there = found();
        EXPECT_TRUE(there == answered_ || there == asked_) << "found: " << there << '\n' << account();
        goOnFrom(there);
    }
    void goOnFrom(const std::string& state) { answered_ = asked_ = state; }
    /// What it has to say of itself.
    virtual std::string account() { return "answered: " + answered_ + "\nasked: " + asked_ + '\n'; }

protected:
    /// Has the service do it, after which that is what is there.
    void does(const QStringList& words, const std::string& after) {
        ask(after);
        call_ = std::make_unique<QDBusPendingCallWatcher>(control_.Do(words, {}));
    }
    void ask(std::string after) { asked_ = std::move(after); }
    void hear() { answered_ = asked_; }
    const std::string& answered() const { return answered_; }
    Control& control() { return control_; }

private:
    Control control_;
    std::unique_ptr<QDBusPendingCallWatcher> call_;
    std::string answered_;
    std::string asked_;
};

/// Moves the clock on by a millisecond at a time.
class ClockMover final : public Mover {
public:
    explicit ClockMover(const QDBusConnection& bus) : Mover{bus, "0"} {}

    void begin() override { does({"advance", "1ms"}, std::to_string(std::stoll(answered()) + 1)); }
    /// "0.007 s\n" -> "7"
    std::string found() override {
        const QByteArray said = control().Do({"clock"}, {}).value();
        return std::to_string(QString{said}.section(' ', 0, 0).remove('.').toLongLong());
    }
};

/// Moves a switch there and back.
class SwitchMover final : public Mover {
public:
    explicit SwitchMover(const QDBusConnection& bus) : Mover{bus, "13"} {}

    void begin() override {
        const std::string value = answered() == "13" ? "11" : "13";
        does({"switch", "refusal", QString::fromStdString(value)}, value);
    }
    std::string found() override {
        const QString said = control().Do({"switch", "refusal"}, {}).value();
        return said.section('\t', 1, 1).toStdString();
    }
};

/// The copies of an extension, oldest first, as a text: "1 uninstalling, 2105 enabled". Every copy but the youngest is
/// on its way out.
class CopyTexts {
public:
    explicit CopyTexts(const std::string& text) {
        for (const QString& line : QString::fromStdString(text).split(", ", Qt::SkipEmptyParts))
            lines_ += line;
    }

    /// The condition of the copy that is installed; empty if none is.
    QString condition() const { return lines_.isEmpty() || isGoing() ? QString{} : lines_.last().section(' ', 1); }
    QString version() const { return lines_.last().section(' ', 0, 0); }

    std::string inCondition(const QString& condition) const {
        return text(lines_.mid(0, lines_.size() - 1) + QStringList{version() + ' ' + condition});
    }
    /// What a restart leaves.
    std::string restarted() const { return condition().isEmpty() ? std::string{} : lines_.last().toStdString(); }
    std::string without() const { return text(lines_.mid(0, lines_.size() - 1)); }
    std::string with(const QString& version, const QString& condition) const {
        const QString before = this->condition().isEmpty() ? QString::fromStdString(text(lines_))
                                                           : QString::fromStdString(inCondition("uninstalling"));
        const QString line = version + ' ' + condition;
        return (before.isEmpty() ? line : before + ", " + line).toStdString();
    }

private:
    bool isGoing() const { return lines_.last().endsWith(" uninstalling"); }
    static std::string text(const QStringList& lines) { return lines.join(", ").toStdString(); }

    QStringList lines_;
};

/// An application that has its extension activated, replaced and removed, and the person and the machine around it.
class ExtensionMover final : public Mover {
public:
    ExtensionMover(SimulatedMac& mac, Random& random, QString identifier)
        : Mover{mac.connect(), {}}, mac_{mac}, random_{random}, identifier_{std::move(identifier)} {
        // Each change at the service becomes an event of this process, after which it looks again.
        QObject::connect(&control(), &Control::Changed, &control(), [] {});
    }

    void begin() override {
        const QString condition = CopyTexts{answered()}.condition();
        if (condition == u"waiting") return beginWaiting();
        if (condition == u"enabled") return beginEnabled();
        if (condition == u"disabled") return beginDisabled();
        pick(random_, 3) == 0 ? install() : activate();
    }

    bool look() override {
        bool came = Mover::look();
        for (const QString& line : application_->takeLines())
            came = understands(line) || came;
        return came;
    }

    /// What was asked before is not waited for any more. What an application asks later is answered later.
    void knock() override {
        token_.clear();
        barrier_ = "barrier" + QString::number(++lastToken_);
        application_->submit(barrier_, "properties", "com.example.nobody");
    }

    bool isAtRest() override {
        look();
        return Mover::isAtRest() && barrier_.isEmpty() && areRequestsAtRest();
    }

    /// Which ends every application.
    void restarted() override {
        goOnFrom(CopyTexts{answered()}.restarted());
        EXPECT_TRUE(application_->ended());
        application_ = mac_.application();
    }

    std::string found() override {
        QStringList lines;
        for (const CopyEntry& copy : control().ListCopies().value()) {
            if (copy.identifier == identifier_ && copy.condition != u"preparing")
                lines += copy.version + ' ' + copy.condition;
        }
        return lines.join(", ").toStdString();
    }

    std::string account() override { return Mover::account() + application_->lines().join('\n').toStdString(); }

private:
    void beginWaiting() {
        const CopyTexts copies{answered()};
        switch (pick(random_, 3)) {
        case 0:
            return does({"allow", identifier_}, copies.inCondition("enabled"));
        case 1:
            return does({"deny", identifier_}, copies.without());
        default:
            return deactivate();
        }
    }

    void beginEnabled() {
        const CopyTexts copies{answered()};
        switch (pick(random_, 5)) {
        case 0:
            return does({"disable", identifier_}, copies.inCondition("disabled"));
        case 1:
            return install();
        case 2:
            return does({"uninstall", "-", identifier_}, copies.inCondition("uninstalling"));
        case 3:
            return deactivate();
        default:
            return activate();
        }
    }

    void beginDisabled() {
        const CopyTexts copies{answered()};
        pick(random_, 3) == 0 ? deactivate() : does({"enable", identifier_}, copies.inCondition("enabled"));
    }

    void install() {
        const QString version = QString::number(++lastVersion_);
        does({"install", identifier_, "0", version}, CopyTexts{answered()}.with(version, "enabled"));
    }

    void activate() {
        const CopyTexts copies{answered()};
        const bool isInstalled = !copies.condition().isEmpty();
        submit("activation", isInstalled ? "finished 0" : "needs approval");
        ask(isInstalled ? answered() : copies.with("2105", "waiting"));
    }

    void deactivate() {
        submit("deactivation", "finished 0");
        ask(CopyTexts{answered()}.inCondition("uninstalling"));
    }

    void submit(const QString& kind, const QString& answer) {
        token_ = "request" + QString::number(++lastToken_);
        wanted_ = answer;
        application_->submit(token_, kind, identifier_);
    }

    /// Whether a line of the application's is the answer that was wanted.
    bool understands(const QString& line) {
        const QString token = line.section(' ', 0, 0);
        const QString answer = line.section(' ', 1);
        if (token == barrier_) barrier_.clear();
        if (token != token_) return false;
        if (answer.startsWith("asked ")) {
            ask(CopyTexts{answered()}.with("2105", "enabled"));
            application_->answer(token_, "replace");
            return false;
        }
        EXPECT_EQ(answer.toStdString(), wanted_.toStdString()) << account();
        token_.clear();
        hear();
        return true;
    }

    bool areRequestsAtRest() {
        for (const RequestEntry& request : control().ListRequests().value()) {
            if (request.stage != u"user" && request.stage != u"replacement") return false;
        }
        return true;
    }

    SimulatedMac& mac_;
    Random& random_;
    QString identifier_;
    std::unique_ptr<Application> application_ = mac_.application();
    QString token_;
    QString wanted_;
    QString barrier_;
    int lastToken_ = 0;
    int lastVersion_ = 0;
};

/// Whether a process is neither running nor waiting: stopped, or gone.
bool isStopped(qint64 process) {
    QFile status{QString{"/proc/%1/stat"}.arg(process)};
    if (!status.open(QIODevice::ReadOnly)) return true;
    const QByteArray line = status.readAll();
    return !QByteArray{"RSD"}.contains(line.at(line.lastIndexOf(')') + 2));
}

/// An application for each of two extensions, whose person and machine are played at random, someone who moves the
/// clock on, and someone who moves a switch.
class TheServiceUnderLoad : public OnASimulatedMac, public testing::WithParamInterface<unsigned> {
protected:
    TheServiceUnderLoad() {
        EXPECT_EQ(mac.does("switch authorization granted"), "");
        movers_.push_back(std::make_unique<ExtensionMover>(mac, random_, camera));
        movers_.push_back(std::make_unique<ExtensionMover>(mac, random_, driver));
        movers_.push_back(std::make_unique<ClockMover>(mac.connect()));
        movers_.push_back(std::make_unique<SwitchMover>(mac.connect()));
    }

    void live() {
        if (pick(random_, 4) == 0) restart();
        each(&Mover::begin);
        ASSERT_TRUE(hear(pick(random_, 20)));
        ASSERT_NO_FATAL_FAILURE(kill());
        if (pick(random_, 10) == 0) {
            // Has a service there that may still be reading its store.
            each(&Mover::knock);
            ASSERT_TRUE(until([&] { return mac.connection().interface()->isServiceRegistered(serviceName).value(); }));
            ASSERT_NO_FATAL_FAILURE(kill());
        }
        each(&Mover::knock);
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

    void restart() {
        EXPECT_EQ(mac.does("restart"), "");
        each(&Mover::restarted);
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
        if (until([&] { return std::all_of(movers_.begin(), movers_.end(), isAtRest); })) return true;
        for (const auto& mover : movers_)
            ADD_FAILURE() << mover->account();
        return false;
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
    EXPECT_GT(answers, static_cast<std::size_t>(4 * lives));
}

INSTANTIATE_TEST_SUITE_P(WithSeed, TheServiceUnderLoad, testing::Values(1U, 2U, 3U, 4U));

} // namespace

} // namespace simulator::tests
