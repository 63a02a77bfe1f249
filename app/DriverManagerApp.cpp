#include "app/DriverManagerApp.h"

#include "model/DriverLoadingViewModel.h"
#include "views/DriverLoadingView.h"

namespace app {

using namespace platform::ui;

WindowGroup DriverManagerApp::body() const {
    return WindowGroup{[] {
        const auto viewModel = model::DriverLoadingViewModel::create();
        viewModel->enumerate();
        return View{views::DriverLoadingView{.viewModel = viewModel, .baseBundleId = "com.kelvra.driverkit.base"}}
            .preferredColorScheme(ColorScheme::light);
    }};
}

int DriverManagerApp::main(const int argc, char** argv) {
    return platform::runApplication(argc, argv, "Driver Manager", appDelegate_, body());
}

} // namespace app
