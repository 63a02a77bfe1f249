# add_macos_libraries(<system>): the services and the window of macOS, compiled against what the interface target
# <system> says. That is the system itself, or what stands in for it in tests.
function(add_macos_libraries system)
    set(folder "${CMAKE_SOURCE_DIR}/platform/macos")
    set(CMAKE_OBJCXX_STANDARD 20)
    set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
    set(CMAKE_OBJCXX_EXTENSIONS OFF)

    # Tools that carry no duty.
    set(tools CallbackGuard.cpp NativeText.mm Unicode.cpp)
    list(TRANSFORM tools PREPEND "${folder}/")
    add_library(platform_macos STATIC ${tools})
    target_link_libraries(platform_macos PUBLIC ${system} platform PRIVATE warnings)
    expose_headers(platform_macos platform/macos)

    # The services: SystemExtensions, Bundle, Log, Output, Text, DispatchQueue.
    set(services Bundle.mm DispatchQueue.mm Log.mm SystemExtensions.mm Text.mm)
    list(TRANSFORM services PREPEND "${folder}/")
    add_library(services_macos STATIC ${services})
    target_link_libraries(services_macos PUBLIC platform platform_macos services_posix PRIVATE warnings)

    # The window: Application, and the drawing of scenes. Whoever links it links the services that it asks, too.
    set(window
        AppKitMetrics.mm Application.mm Conversions.mm ImageStore.mm MainMenu.mm MainWindow.mm SceneButton.mm
        SceneCanvas.mm SceneControl.mm SceneMenu.mm ScenePainter.mm)
    list(TRANSFORM window PREPEND "${folder}/")
    add_library(window_macos STATIC ${window})
    target_link_libraries(window_macos PUBLIC platform platform_ui platform_macos PRIVATE platform_posix warnings)
endfunction()
