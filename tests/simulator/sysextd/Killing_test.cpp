// The service is killed again and again while many have it do something, and comes back each time.

#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCallWatcher>
#include <QFile>

#include <sqlite3.h>

#include <algorithm>
#include <csignal>
#include <random>
#include <thread>
#include <utility>

namespace simulator::tests {

namespace {

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

bool Call::look() {
    if (!watcher_ || !watcher_->isFinished()) return false;
    const auto finished = std::exchange(watcher_, nullptr);
    if (!finished->isError()) return true;
    EXPECT_EQ(finished->error().type(), QDBusError::NoReply) << finished->error().message().toStdString();
    return false;
}

using Random = std::mt19937;

std::size_t pick(Random& random, std::size_t below) {
    return std::uniform_int_distribution<std::size_t>{0, below - 1}(random);
}

/// Someone whose every deed is one call.
class Caller : public Worker {
public:
    explicit Caller(const QDBusConnection& bus) : control_{serviceName, objectPath, bus} {}

    bool look() override {
        const bool came = call_.look();
        if (came) hear();
        return came;
    }
    bool isAtRest() override {
        look();
        return !call_.isUnderWay();
    }

protected:
    /// Has the service do it, after which that is what is there.
    void does(const QStringList& words, const std::string& after) {
        ask(after);
        call_.make(control_.Do(words, {}));
    }
    Control& control() { return control_; }

private:
    Control control_;
    Call call_;
};

/// Moves the clock on by a millisecond at a time.
class ClockMover final : public Caller {
public:
    explicit ClockMover(const QDBusConnection& bus) : Caller{bus} { goOnFrom("0"); }

    void begin() override { does({"advance", "1ms"}, std::to_string(std::stoll(answered()) + 1)); }
    /// "0.007\n" -> "7"
    std::string found() override {
        const QByteArray said = control().Do({"advance", "0"}, {}).value();
        return std::to_string(QString{said}.trimmed().remove('.').toLongLong());
    }
};

/// Moves a switch there and back.
class SwitchMover final : public Caller {
public:
    explicit SwitchMover(const QDBusConnection& bus) : Caller{bus} { goOnFrom("13"); }

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
class ExtensionMover final : public Caller {
public:
    ExtensionMover(Random& random, QString identifier, const QString& program, const QProcessEnvironment& environment,
                   const QDBusConnection& bus)
        : Caller{bus},
          random_{random},
          identifier_{std::move(identifier)},
          program_{program},
          environment_{environment} {
        application_ = std::make_unique<Application>(program_, environment_);
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
        bool came = Caller::look();
        const QStringList lines = application_->takeLines();
        for (const QString& line : lines)
            came = understands(line) || came;
        lastLines_ = (lastLines_ + lines).last(std::min<qsizetype>(lastLines_.size() + lines.size(), 10));
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
        return Caller::isAtRest() && barrier_.isEmpty() && areRequestsAtRest();
    }

    /// Which ends every application.
    void restarted() override {
        goOnFrom(CopyTexts{answered()}.restarted());
        EXPECT_TRUE(application_->ended());
        application_ = std::make_unique<Application>(program_, environment_);
    }

    std::string found() override {
        QStringList lines;
        for (const CopyEntry& copy : control().ListCopies().value()) {
            if (copy.identifier == identifier_ && copy.condition != u"preparing")
                lines += copy.version + ' ' + copy.condition;
        }
        return lines.join(", ").toStdString();
    }

    std::string account() const override { return Worker::account() + lastLines_.join('\n').toStdString() + '\n'; }

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

    Random& random_;
    QString identifier_;
    QString program_;
    QProcessEnvironment environment_;
    std::unique_ptr<Application> application_;
    QString token_;
    QString wanted_;
    QString barrier_;
    QStringList lastLines_;
    int lastToken_ = 0;
    int lastVersion_ = 0;
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

Load::Load(unsigned seed, const QString& program, const QProcessEnvironment& environment,
           const std::vector<QDBusConnection>& buses)
    : random_{seed} {
    workers_.push_back(std::make_unique<ExtensionMover>(random_, camera, program, environment, buses.at(0)));
    workers_.push_back(std::make_unique<ExtensionMover>(random_, driver, program, environment, buses.at(1)));
    workers_.push_back(std::make_unique<ClockMover>(buses.at(2)));
    workers_.push_back(std::make_unique<SwitchMover>(buses.at(3)));
}

void Load::begin() {
    for (const auto& worker : workers_)
        worker->begin();
}

bool Load::hears(int answers) {
    int heard = 0;
    return until([&] {
        for (const auto& worker : workers_) {
            if (!worker->look()) continue;
            ++heard;
            ++answers_;
            worker->begin();
        }
        return heard >= answers;
    });
}

void Load::restarted() {
    for (const auto& worker : workers_)
        worker->restarted();
}

void Load::knock() {
    for (const auto& worker : workers_)
        worker->knock();
}

bool Load::comesToRest() {
    return until([&] {
        return std::all_of(workers_.begin(), workers_.end(), [](const auto& worker) { return worker->isAtRest(); });
    });
}

std::string Load::account() const {
    std::string all;
    for (const auto& worker : workers_)
        all += worker->account();
    return all;
}

void Load::compare() {
    for (const auto& worker : workers_) {
        const std::string found = worker->found();
        EXPECT_TRUE(worker->explains(found)) << "found: " << found << '\n' << worker->account();
        worker->goOnFrom(found);
    }
}

// The kills -----------------------------------------------------------------------------------------------------------

/// Whether a process is neither running nor waiting: stopped, or gone.
bool isStopped(qint64 process) {
    QFile status{QString{"/proc/%1/stat"}.arg(process)};
    if (!status.open(QIODevice::ReadOnly)) return true;
    const QByteArray line = status.readAll();
    return !QByteArray{"RSD"}.contains(line.at(line.lastIndexOf(')') + 2));
}

/// What SQLite finds wrong with a file; "ok" for nothing.
std::string integrityOf(const QString& file) {
    sqlite3* handle = nullptr;
    const auto keep = [](void* verdict, int, char** values, char**) {
        *static_cast<std::string*>(verdict) += values[0];
        return 0;
    };
    std::string verdict;
    if (sqlite3_open(file.toUtf8(), &handle) != SQLITE_OK ||
        sqlite3_exec(handle, "PRAGMA integrity_check", keep, &verdict, nullptr) != SQLITE_OK) {
        verdict = sqlite3_errmsg(handle);
    }
    sqlite3_close(handle);
    return verdict;
}

class TheServiceUnderLoad : public OnASimulatedMac, public testing::WithParamInterface<unsigned> {
protected:
    TheServiceUnderLoad() {
        EXPECT_EQ(mac.does("switch authorization granted"), "");
        std::vector<QDBusConnection> buses;
        for (std::size_t i = 0; i < Load::connections; ++i)
            buses.push_back(mac.connect());
        load = std::make_unique<Load>(GetParam(), mac.program(), mac.environment(), buses);
    }

    int pick(int below) { return std::uniform_int_distribution<int>{0, below - 1}(random_); }

    /// Kills the service wherever it is. What it leaves on the disk is looked at before anyone can start it again.
    void kill() {
        const QString owner = mac.connection().interface()->serviceOwner(serviceName);
        const qint64 process = mac.connection().interface()->servicePid(owner).value();
        ASSERT_TRUE(sendSignal(process, SIGSTOP));
        while (!isStopped(process))
            std::this_thread::yield();
        const QString image = copyOfTheStore();
        ASSERT_TRUE(sendSignal(process, SIGKILL));
        ASSERT_TRUE(until([&] { return mac.connection().interface()->serviceOwner(serviceName).value() != owner; }));
        ASSERT_EQ(integrityOf(image), "ok");
        ++kills;
    }

    /// Has a service there that may still be reading its store.
    void startAgain() {
        load->knock();
        ASSERT_TRUE(until([&] { return mac.connection().interface()->isServiceRegistered(serviceName).value(); }));
    }

    void live() {
        if (pick(4) == 0) {
            EXPECT_EQ(mac.does("restart"), "");
            load->restarted();
        }
        load->begin();
        ASSERT_TRUE(load->hears(pick(20)));
        ASSERT_NO_FATAL_FAILURE(kill());
        if (pick(10) == 0) {
            ASSERT_NO_FATAL_FAILURE(startAgain());
            ASSERT_NO_FATAL_FAILURE(kill());
        }
        load->knock();
        ASSERT_TRUE(load->comesToRest()) << load->account();
        load->compare();
    }

    std::unique_ptr<Load> load;
    int kills = 0;

private:
    QString copyOfTheStore() const {
        const QString copy = mac.folder() + "/image.sqlite";
        for (const auto* const part : {"", "-wal"}) {
            QFile::remove(copy + part);
            QFile::copy(mac.storeFile() + part, copy + part);
        }
        return copy;
    }

    std::mt19937 random_{GetParam()};
};

TEST_P(TheServiceUnderLoad, LosesNothingThatWasAnsweredWheneverItIsKilled) {
    const int lives = qEnvironmentVariableIsSet("DRIVER_MANAGER_LONG") ? 250 : 25;
    while (kills < lives && !HasFailure())
        live();
    EXPECT_GT(load->answers(), static_cast<std::size_t>(4 * lives));
}

INSTANTIATE_TEST_SUITE_P(WithSeed, TheServiceUnderLoad, testing::Values(1U, 2U, 3U, 4U));

} // namespace

} // namespace simulator::tests
