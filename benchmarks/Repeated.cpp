// What happens inside the application between an answer and the pixels, and calls of the extension service.

#include "model/DriverLoadingViewModel.h"
#include "platform/Bundle.h"
#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/ScenePainter.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"
#include "views/CardView.h"
#include "views/DriverLoadingView.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QQueue>

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>

// The application's, for a program outside of it.
const platform::NSBundle& platform::NSBundle::mainBundle() {
    static const NSBundle bundle{
        "Info.plist", std::make_shared<InfoDictionary>(InfoDictionary{{"CFBundleVersion", "2105"}}), {}, ICONS};
    return bundle;
}

namespace {

using namespace platform;
constexpr const char* camera = "com.kelvra.ip-camera.cmio";

/// The window of the application, shown, and the model behind it.
struct Window {
    Window() {
        window.present(host.scene());
        window.show();
        QCoreApplication::processEvents();
    }
    /// The camera's copy is enabled, or no longer: the banner's sentence stays, the card changes.
    void change() {
        enabled = !enabled;
        const auto request = OSSystemExtensionRequest::propertiesRequestForExtension(camera, DispatchQueue::main());
        model->requestFoundProperties(*request, {{camera, "2.1", "2105", enabled, !enabled, false, {}}});
        std::exchange(rebuild, nullptr)();
    }

    std::shared_ptr<model::DriverLoadingViewModel> model = model::DriverLoadingViewModel::create();
    ImageStore images{ICONS};
    QtMetrics metrics{images};
    MainWindow window{"Window", images};
    std::function<void()> rebuild;
    bool enabled = false;
    ui::SceneHost host{{[this] { return ui::View{views::DriverLoadingView{.viewModel = model, .baseBundleId = ""}}; }},
                       metrics,
                       {},
                       [this](std::function<void()> work) { rebuild = std::move(work); },
                       [this](const ui::Scene& scene) { window.present(scene); }};
};

/// A frame as it is, with the camera enabled and not enabled in turn.
void paintAlone(benchmark::State& state) {
    std::array<Window, 2> windows;
    windows[0].change();
    windows[0].change();
    windows[1].change();
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state)
        windows.at(next++ % 2).window.repaint();
}

/// The same frames of one window, after a change that is described, laid out, and matched with what was there.
void paintChanged(benchmark::State& state) {
    Window window;
    window.change();
    for ([[maybe_unused]] auto _ : state) {
        window.change();
        window.window.repaint();
    }
}

/// A list of that many cards, described and laid out.
void layOut(benchmark::State& state) {
    const Window window;
    const ui::RememberedMetrics metrics{window.metrics};
    const auto record = model::initialRecords()[1];
    const auto card = [&](std::size_t) {
        return ui::View{views::CardView{record, [](auto&) {}, [](auto&) {}, [] {}, 2105}};
    };
    for ([[maybe_unused]] auto _ : state) {
        const ui::ForEach cards{static_cast<std::size_t>(state.range()), card};
        const ui::View list = ui::VStack{ui::HorizontalAlignment::center, cards}.frame({.width = 400});
        benchmark::DoNotOptimize(ui::layout(list, std::nullopt, metrics));
    }
}

QDBusPendingCall send(const QString& method, const int number) {
    auto call = QDBusMessage::createMethodCall("com.kelvra.Simulator1", "/com/kelvra/Simulator1",
                                               "com.kelvra.Simulator1.Control", method);
    if (method == "Do") call << QStringList{number % 2 == 0 ? "disable" : "enable", camera} << QByteArray{};
    return QDBusConnection::sessionBus().asyncCall(call);
}

/// A thousand calls of the service, up to 32 of them under way at any time.
void ask(benchmark::State& state, const char* const method) {
    for ([[maybe_unused]] auto _ : state) {
        QQueue<QDBusPendingCall> pending;
        for (int number = 0; number < 1032; ++number) {
            if (number < 1000) pending.enqueue(send(method, number));
            if (number < 32) continue;
            pending.head().waitForFinished();
            if (pending.dequeue().isError()) std::abort();
        }
    }
}

/// A fixed number of repetitions, so that instructions can be counted: those of one are the difference of two runs.
void repeat(benchmark::internal::Benchmark* const benchmark) {
    benchmark->Unit(benchmark::kMillisecond);
    if (const char* const times = std::getenv("REPETITIONS")) benchmark->Iterations(std::atoi(times));
}

BENCHMARK(paintAlone)->Apply(repeat);
BENCHMARK(paintChanged)->Apply(repeat);
BENCHMARK(layOut)->Arg(100)->Arg(1000)->Arg(10000)->Apply(repeat);
BENCHMARK_CAPTURE(ask, read, "ListCopies")->Iterations(5)->UseRealTime()->Apply(repeat);
BENCHMARK_CAPTURE(ask, change, "Do")->Iterations(5)->UseRealTime()->Apply(repeat);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    chooseStyle();
    QApplication application{argc, argv};
    benchmark::RunSpecifiedBenchmarks();
}
