// The application, the service, and System Settings go the same way again and again. Nothing may add up or be lost.

#include "simulator/player/BusMac.h"
#include "tests/simulator/support/SimulatedMac.h"

#include <QDBusConnectionInterface>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <random>
#include <thread>

namespace simulator::tests {

namespace {

namespace fs = std::filesystem;

/// By default, only enough to see that the test works.
int longOr(const int number, const int usual) {
    return std::getenv("DRIVER_MANAGER_LONG") ? number : usual;
}

/// A step on the way of the camera, from nothing to a restart after its removal.
struct Step {
    /// What the application shows before.
    QByteArray state;
    /// What is pressed in the application.
    QByteArrayList presses;
    /// What the user of the Mac does then, about the camera.
    QString verb;
    /// How often the application then asks for all properties.
    int looks = 1;
};

/// By the copies of the camera, oldest first.
const std::map<std::vector<std::string>, Step> way{
    {{}, {"Not installed", {"press Activate Camera Driver"}, {}}},
    {{"2105 waiting"}, {"Await approval", {}, "allow CAMERA"}},
    {{"2105 enabled"}, {"Enabled", {}, "install CAMERA 2.0 2004", 0}},
    {{"2105 uninstalling", "2004 enabled"},
     {"Enabled", {"press Camera Driver actions", "choose Refresh", "press Upgrade Camera Driver"}, {}, 2}},
    {{"2105 uninstalling", "2004 uninstalling", "2105 enabled"},
     {"Enabled", {"press Camera Driver actions", "choose Remove"}, "authorize CAMERA"}},
    {{"2105 uninstalling", "2004 uninstalling", "2105 uninstalling"}, {"Uninstalling", {}, "restart"}},
};

/// How many such lines the application prints on the way, including its next start.
const std::map<QByteArray, long> printedInARound{{"Sysex identifier ", 2},
                                                 {"needs user approval", 1},
                                                 {"Sysex replacement", 1},
                                                 {"finished: 0", 3},
                                                 {"failed", 0},
                                                 {"driverkit.base 2.1/2105 ", 6},
                                                 {"usb-to-poe 2.1/2105 ", 6},
                                                 {"State: Await", 1},
                                                 {"cmio 2.1/2105 State: En", 2},
                                                 {"cmio 2.0/2004 State: En", 1},
                                                 {"State: Uninst", 1},
                                                 {"State: ", 17}};

/// In KiB, of a process.
long memoryOf(const qint64 process) {
    std::ifstream pages{"/proc/" + std::to_string(process) + "/statm"};
    long all = 0;
    long resident = 0;
    pages >> all >> resident;
    return resident * 4;
}

long descriptorsOf(const qint64 process) {
    const auto folder = fs::directory_iterator{"/proc/" + std::to_string(process) + "/fd"};
    return std::distance(begin(folder), end(folder));
}

class TheApplication : public OnASimulatedMac {
protected:
    using Numbers = std::map<std::string, long>;

    TheApplication() {
        const QString bundle = mac.applications() + "/Driver Manager.app";
        player::writeBundle(player::sampleApplication(), bundle, APPLICATION);
        fs::copy(ICONS, (bundle + "/Contents/Resources").toStdString(), fs::copy_options::recursive);
        for (const auto* const identifier : {"com.kelvra.driverkit.base", driver})
            EXPECT_EQ(mac.does({"install", identifier, "2.1", "2105"}), "");
        QObject::connect(&mac.control(), &Control::Changed, [] {}); // wakes this process
    }

    std::unique_ptr<Program> started(const QString& program) {
        auto environment = mac.environment();
        environment.insert("DBUS_SESSION_BUS_ADDRESS", mac.bus().address());
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        return std::make_unique<Program>(program, QStringList{}, environment);
    }
    void start() {
        application = started(mac.program());
        waitForLooks(1);
    }

    /// How many lines it has printed with this text.
    long lines(const QByteArray& text) { return application->output().count(text) + application->errors().count(text); }
    /// It asks about the network driver last.
    void waitForLooks(const long count) {
        ASSERT_TRUE(until([&] { return lines("usb-to-poe ") >= count; })) << application->errors().toStdString();
    }

    const Step& nextStep() { return way.at(mac.copies(camera)); }
    void order(const QByteArray& words) { application->write(words + '\n'); }
    void see(const Step& step) {
        const long seen = lines("seen\n");
        order("see |Camera Driver|" + step.state + '|');
        ASSERT_TRUE(until([&] { return lines("seen\n") > seen; })) << step.state.toStdString();
    }
    void press(const Step& step) {
        for (const auto& press : step.presses)
            order(press);
    }
    void act(const Step& step) {
        bool isDone = step.verb.isEmpty();
        const QString verb = QString{step.verb}.replace("CAMERA", camera);
        ASSERT_TRUE(until([&] { return isDone = isDone || mac.does(verb).empty(); })) << step.verb.toStdString();
    }

    /// Goes the whole way once, and expects one outcome of each request.
    void goRound() {
        application->forget();
        long looks = 0;
        for (std::size_t step = 0; step < way.size(); ++step) {
            const Step& next = nextStep();
            ASSERT_NO_FATAL_FAILURE(see(next));
            press(next);
            ASSERT_NO_FATAL_FAILURE(act(next));
            ASSERT_NO_FATAL_FAILURE(waitForLooks(looks += next.looks));
        }
        for (const auto& [text, count] : printedInARound)
            ASSERT_EQ(lines(text), count) << text.toStdString();
    }

    /// What runs holds: memory, descriptors, and what the application itself counts.
    Numbers held(const Program& settings) {
        application->forget();
        order("count");
        EXPECT_TRUE(application->printed("\n"));
        const QByteArrayList counts = application->output().simplified().split(' ');
        const qint64 service = mac.processOfService();
        return {{"application, KiB", memoryOf(application->process())},
                {"application, KiB on the heap", counts.value(2).toLong() / 1024},
                {"application, descriptors", descriptorsOf(application->process())},
                {"application, objects", counts.value(1).toLong()},
                {"service, KiB", memoryOf(service)},
                {"service, descriptors", descriptorsOf(service)},
                {"System Settings, KiB", memoryOf(settings.process())},
                {"System Settings, descriptors", descriptorsOf(settings.process())},
                {"bus, names", mac.connection().interface()->registeredServiceNames().value().size()}};
    }

    int pick(const int below) { return std::uniform_int_distribution{0, below - 1}(random); }
    /// Takes the step, or a part of it.
    void useFor(const Step& step) {
        press(step);
        if (pick(4) == 0) return;
        act(step);
        if (!step.presses.isEmpty() && pick(2) > 0) waitForLooks(1 + step.looks);
    }
    /// The application starts and shows the Mac, and is killed in the middle of the next step.
    void useUntilKilled() {
        start();
        const Step& step = nextStep();
        ASSERT_NO_FATAL_FAILURE(see(step));
        ++shown[step.state.toStdString()];
        if (pick(4) > 0) useFor(step);
        std::this_thread::sleep_for(std::chrono::microseconds{pick(20'000)});
        ASSERT_TRUE(application->signal(SIGKILL) && application->ended());
        while (!must(mac.control().ListRequests()).value().isEmpty())
            std::this_thread::yield();
    }

    std::unique_ptr<Program> application;
    std::map<std::string, int> shown;
    std::mt19937 random{1};
};

TEST_F(TheApplication, LosesNoAnswerAndKeepsNothingOverManyRoundsAndRestarts) {
    const auto settings = started(SYSTEM_SETTINGS);
    ASSERT_TRUE(settings->printed("open"));
    ASSERT_NO_FATAL_FAILURE(start());
    const int rounds = longOr(10'000, 10);
    Numbers first;
    for (int round = 1; round <= rounds; ++round) {
        ASSERT_NO_FATAL_FAILURE(goRound());
        if (round == rounds / 5) first = held(*settings);
    }
    for (const auto& [what, number] : held(*settings)) {
        std::cout << what << ": " << first[what] << ", at the end " << number << '\n';
        const bool isMemory = what.find("KiB") != std::string::npos;
        EXPECT_LE(number - first[what], isMemory ? 1024 + rounds : 2) << what;
    }
}

TEST_F(TheApplication, IsForgottenWheneverItIsKilledAndThenShowsTheMacAgain) {
    const int kills = longOr(1'000, 5);
    ASSERT_NO_FATAL_FAILURE(useUntilKilled());
    const qint64 service = mac.processOfService();
    const long memory = memoryOf(service);
    const long descriptors = descriptorsOf(service);
    for (int kill = 1; kill < kills; ++kill)
        ASSERT_NO_FATAL_FAILURE(useUntilKilled());
    std::cout << "service, KiB: " << memory << ", at the end " << memoryOf(service) << ", killed while it showed "
              << testing::PrintToString(shown) << '\n';
    EXPECT_EQ(mac.processOfService(), service);
    EXPECT_LE(memoryOf(service), memory + 1024);
    EXPECT_LE(descriptorsOf(service), descriptors);
    EXPECT_TRUE(shown.size() == 4 || kills < 1'000);
}

} // namespace

} // namespace simulator::tests
