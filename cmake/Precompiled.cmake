# Most of the time to compile goes into the headers of Qt and GoogleTest, so they are precompiled once for all targets
# that link these libraries.

set(standard_headers <algorithm> <functional> <map> <memory> <optional> <string> <variant> <vector>)
set(test_headers <gtest/gtest.h> <gmock/gmock.h>)
set(qt_headers
    <QtCore/QCoreApplication> <QtCore/QProcess> <QtCore/QTimer> <QtCore/QVariant> <QtDBus/QDBusAbstractAdaptor>
    <QtDBus/QDBusArgument> <QtDBus/QDBusConnection> <QtDBus/QDBusMessage> <QtDBus/QDBusPendingCallWatcher>
    <QtDBus/QDBusServiceWatcher> <QtGui/QMouseEvent> <QtGui/QPainter> <QtGui/QPainterPath> <QtWidgets/QApplication>
    <QtWidgets/QBoxLayout> <QtWidgets/QLabel> <QtWidgets/QPushButton>)

# add_precompiled(<name> LINKS <target>... HEADERS <header>...): precompiles headers for targets with the same options.
# It links only Qt's core, because a target may define more macros than its precompiled headers, not fewer.
function(add_precompiled name)
    cmake_parse_arguments(precompiled "" "" "LINKS;HEADERS" ${ARGN})
    set(sources "${CMAKE_BINARY_DIR}/${name}.cpp")
    if("gnustep" IN_LIST precompiled_LINKS)
        list(APPEND sources "${CMAKE_BINARY_DIR}/${name}.mm")
    endif()
    foreach(source IN LISTS sources)
        file(CONFIGURE OUTPUT "${source}" CONTENT "")
    endforeach()
    add_library(${name} OBJECT ${sources})
    target_link_libraries(${name} PRIVATE ${precompiled_LINKS} warnings)
    foreach(module IN ITEMS DBus Gui Widgets)
        if("Qt6::Core" IN_LIST precompiled_LINKS)
            get_target_property(folders Qt6::${module} INTERFACE_INCLUDE_DIRECTORIES)
            target_include_directories(${name} SYSTEM PRIVATE ${folders})
        endif()
    endforeach()
    target_precompile_headers(${name} PRIVATE ${standard_headers} ${precompiled_HEADERS})
endfunction()

# reuse_precompiled(<folder>): gives the targets of the folder and its subfolders the matching precompiled headers.
function(reuse_precompiled folder)
    get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(NOT type MATCHES "^(EXECUTABLE|STATIC_LIBRARY|OBJECT_LIBRARY)$" OR target MATCHES "^precompiled_")
            continue()
        endif()
        all_linked(linked ${target})
        set(kind precompiled)
        if(linked MATCHES "Qt6::")
            string(APPEND kind _qt)
        elseif("gnustep" IN_LIST linked)
            string(APPEND kind _macos)
        endif()
        if(linked MATCHES "GTest::")
            string(APPEND kind _tests)
        endif()
        get_target_property(sources ${target} SOURCES)
        if(APPLE AND sources MATCHES "\\.mm(;|$)")
            continue() # they would need the headers in Objective-C++
        endif()
        if(TARGET ${kind})
            target_precompile_headers(${target} REUSE_FROM ${kind})
        endif()
    endforeach()
    get_property(folders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
    foreach(below IN LISTS folders)
        reuse_precompiled("${below}")
    endforeach()
endfunction()

# precompile_headers(): call it after all targets are defined.
function(precompile_headers)
    add_precompiled(precompiled_tests LINKS GTest::gmock HEADERS ${test_headers})
    if(DRIVER_MANAGER_WINDOW AND NOT APPLE)
        find_package(Qt6 REQUIRED COMPONENTS Core DBus Gui Widgets)
        add_precompiled(precompiled_qt LINKS Qt6::Core HEADERS ${qt_headers})
        add_precompiled(precompiled_qt_tests LINKS Qt6::Core GTest::gmock HEADERS ${qt_headers} ${test_headers})
    endif()
    reuse_precompiled("${CMAKE_SOURCE_DIR}")
endfunction()
