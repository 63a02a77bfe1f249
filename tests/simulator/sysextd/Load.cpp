#include "tests/simulator/sysextd/Load.h"

#include "simulator/bus/Names.h"
#include "tests/simulator/application/SampleBundle.h"
#include "tests/simulator/support/Until.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace simulator::tests {

namespace {

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
    void call(const QDBusPendingCall& made, const std::string& after) {
        ask(after);
        call_.make(made);
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

    void begin() override { call(control().Advance(1), std::to_string(std::stoll(answered()) + 1)); }
    std::string found() override { return std::to_string(control().Advance(0).value()); }
};

/// Moves a switch there and back.
class SwitchMover final : public Caller {
public:
    explicit SwitchMover(const QDBusConnection& bus) : Caller{bus} { goOnFrom("13"); }

    void begin() override {
        const std::string value = answered() == "13" ? "11" : "13";
        call(control().SetSwitch("refusal", QString::fromStdString(value)), value);
    }
    std::string found() override {
        for (const SwitchEntry& entry : control().ListSwitches().value()) {
            if (entry.name == u"refusal") return entry.value.toStdString();
        }
        return {};
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
        : Caller{bus}, random_{random}, identifier_{std::move(identifier)}, asker_{program, environment} {
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
        const QStringList lines = asker_.takeLines();
        for (const QString& line : lines)
            came = understands(line) || came;
        lastLines_ = (lastLines_ + lines).last(std::min<qsizetype>(lastLines_.size() + lines.size(), 10));
        return came;
    }

    /// What was asked before is not waited for any more. An application has its calls answered one by one.
    void knock() override {
        token_.clear();
        barrier_ = "barrier" + QString::number(++lastToken_);
        asker_.tell("submit " + barrier_ + " properties com.example.nobody");
    }

    bool isAtRest() override {
        look();
        return Caller::isAtRest() && barrier_.isEmpty() && areRequestsAtRest();
    }

    void restarted() override { goOnFrom(CopyTexts{answered()}.restarted()); }

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
            return call(control().Allow(identifier_), copies.inCondition("enabled"));
        case 1:
            return call(control().Deny(identifier_), copies.without());
        default:
            return deactivate();
        }
    }

    void beginEnabled() {
        const CopyTexts copies{answered()};
        switch (pick(random_, 5)) {
        case 0:
            return call(control().Disable(identifier_), copies.inCondition("disabled"));
        case 1:
            return install();
        case 2:
            return call(control().Uninstall("-", identifier_), copies.inCondition("uninstalling"));
        case 3:
            return deactivate();
        default:
            return activate();
        }
    }

    void beginDisabled() {
        const CopyTexts copies{answered()};
        pick(random_, 3) == 0 ? deactivate() : call(control().Enable(identifier_), copies.inCondition("enabled"));
    }

    void install() {
        const QString version = QString::number(++lastVersion_);
        call(control().Install(identifier_, "0", version, "enabled"), CopyTexts{answered()}.with(version, "enabled"));
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
        asker_.tell("submit " + token_ + ' ' + kind + ' ' + identifier_);
    }

    /// Whether a line of the application's is the answer that was wanted.
    bool understands(const QString& line) {
        const QString token = line.section(' ', 0, 0);
        const QString answer = line.section(' ', 1);
        const bool isLost = answer == u"refused org.freedesktop.DBus.Error.NoReply";
        if (token == barrier_) isLost ? knock() : barrier_.clear();
        if (token != token_ || isLost) return false;
        if (answer.startsWith("replace ")) {
            ask(CopyTexts{answered()}.with("2105", "enabled"));
            asker_.tell("answer " + token_ + " replace");
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
    Asker asker_;
    QString token_;
    QString wanted_;
    QString barrier_;
    QStringList lastLines_;
    int lastToken_ = 0;
    int lastVersion_ = 0;
};

} // namespace

bool Call::look() {
    if (!watcher_ || !watcher_->isFinished()) return false;
    const auto finished = std::exchange(watcher_, nullptr);
    if (!finished->isError()) return true;
    EXPECT_EQ(finished->error().type(), QDBusError::NoReply) << finished->error().message().toStdString();
    return false;
}

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

} // namespace simulator::tests
