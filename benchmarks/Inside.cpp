// What happens inside the application between an answer and the pixels, without a bus and without a display.

#include "app/DriverManagerApp.h"
#include "model/DriverLoadingViewModel.h"
#include "platform/Bundle.h"
#include "platform/Log.h"
#include "platform/Output.h"
#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"
#include "platform/linux/MainWindow.h"
#include "platform/linux/ScenePainter.h"
#include "platform/ui/Elements.h"
#include "platform/ui/SceneHost.h"
#include "views/CardView.h"
#include "views/DriverLoadingView.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <cstdlib>

// The services, for a program that asks nobody.
namespace platform {

namespace {

class SilentManager final : public OSSystemExtensionManager {
    void submitRequest(std::shared_ptr<OSSystemExtensionRequest>) override {}
};

} // namespace

const NSBundle& NSBundle::mainBundle() {
    static const NSBundle bundle{
        "Info.plist", std::make_shared<InfoDictionary>(InfoDictionary{{"CFBundleVersion", "2105"}}), {}, ICONS};
    return bundle;
}
OSSystemExtensionManager& OSSystemExtensionManager::sharedManager() {
    static SilentManager manager;
    return manager;
}
void DispatchQueue::async(std::function<void()>) const {
}
void writeLogLine(const std::string&) {
}
void printLine(std::string_view) {
}

} // namespace platform

namespace {

using namespace platform;
using model::DriverLoadingViewModel;

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

    std::shared_ptr<DriverLoadingViewModel> model = DriverLoadingViewModel::create();
    ImageStore images{QStringLiteral(ICONS)};
    QtMetrics metrics{images};
    MainWindow window{QStringLiteral("Window"), images};
    std::function<void()> rebuild;
    bool enabled = false;
    ui::SceneHost host{{[this] { return ui::View{views::DriverLoadingView{.viewModel = model, .baseBundleId = ""}}; }},
                       metrics,
                       {},
                       [this](std::function<void()> work) { rebuild = std::move(work); },
                       [this](const ui::Scene& scene) { window.present(scene); }};
};

/// One frame as it is.
void paint(benchmark::State& state) {
    Window window;
    window.change();
    for ([[maybe_unused]] auto _ : state)
        window.window.repaint();
}

/// One change of the model, described, laid out, matched with what was there, and painted.
void changeAndPaint(benchmark::State& state) {
    Window window;
    for ([[maybe_unused]] auto _ : state) {
        window.change();
        window.window.repaint();
    }
}

class PlainMetrics : public ui::Metrics {
public:
    ui::Size textSize(const std::string& text, ui::Font) const override {
        return {7.0 * static_cast<double>(text.size()), 16};
    }
    ui::Size imageSize(const ui::ImageReference&) const override { return {22, 22}; }
};

ui::View listOf(const std::vector<model::SysExtInfo>& records) {
    const auto row = [&](const std::size_t index) {
        return ui::View{views::CardView{.sei = records[index],
                                        .activate = [](const std::string&) {},
                                        .deactivate = [](const std::string&) {},
                                        .enumerate = [] {},
                                        .version = 2105}};
    };
    return ui::VStack{ui::HorizontalAlignment::center, ui::ForEach{records.size(), row}}.frame({.width = 400});
}

/// A list of that many cards, described and laid out.
void layOut(benchmark::State& state) {
    const PlainMetrics plain;
    const ui::RememberedMetrics metrics{plain};
    const std::vector records(static_cast<std::size_t>(state.range()), model::initialRecords()[1]);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(ui::layout(listOf(records), std::nullopt, metrics));
}

/// A fixed number of repetitions, so that instructions can be counted: those of one are the difference of two runs.
void repeat(benchmark::internal::Benchmark* const benchmark) {
    benchmark->Unit(benchmark::kMicrosecond);
    if (const char* const times = std::getenv("REPETITIONS")) benchmark->Iterations(std::atoi(times));
}

BENCHMARK(paint)->Apply(repeat);
BENCHMARK(changeAndPaint)->Apply(repeat);
BENCHMARK(layOut)->Arg(100)->Arg(1000)->Arg(10000)->Apply(repeat);

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    chooseStyle();
    QApplication application{argc, argv};
    benchmark::RunSpecifiedBenchmarks();
}
