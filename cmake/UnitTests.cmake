if(CMAKE_CXX_FLAGS MATCHES "libc\\+\\+" AND NOT APPLE) # the installed one is built with libstdc++
    add_subdirectory(/usr/src/googletest "${CMAKE_BINARY_DIR}/googletest" EXCLUDE_FROM_ALL SYSTEM)
else()
    find_package(GTest QUIET)
endif()
if(NOT TARGET GTest::gmock) # on a Mac: the release that Debian 12 has
    include(FetchContent)
    set(INSTALL_GTEST OFF)
    FetchContent_Declare(
        googletest
        URL https://github.com/google/googletest/archive/refs/tags/release-1.12.1.tar.gz
        URL_HASH SHA256=81964fe578e9bd7c94dfdb09c8e4d6e6759e19967e397dbea48d1c10e45d0df2
        DOWNLOAD_EXTRACT_TIMESTAMP ON SYSTEM)
    FetchContent_MakeAvailable(googletest)
endif()

# GoogleTest's main function, and the headers that tests share.
add_library(test_main INTERFACE)
target_link_libraries(test_main INTERFACE GTest::gmock_main)
expose_headers(test_main tests/support)

# register_suites(<name>): each suite of the test program becomes one test. The program lists its suites when ctest
# starts. If it needs a display or the like, its property CROSSCOMPILING_EMULATOR provides it.
function(register_suites name)
    get_target_property(emulator ${name} CROSSCOMPILING_EMULATOR)
    if(NOT emulator)
        set(emulator "")
    endif()
    set(file "${CMAKE_CURRENT_BINARY_DIR}/${name}_suites.cmake")
    file(
        GENERATE
        OUTPUT "${file}"
        CONTENT "include(\"${CMAKE_SOURCE_DIR}/cmake/Suites.cmake\")
add_suites(\"${name}\" \"$<TARGET_FILE:${name}>\" \"${emulator}\")
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${file}")
endfunction()

# add_unit_tests(<name> LINKS <target>... [SOURCES <file>...] [MAIN <target>]): one test program from every
# *_test.cpp in this folder. MAIN is the library with its main function (default: test_main).
function(add_unit_tests name)
    cmake_parse_arguments(tests "" "MAIN" "LINKS;SOURCES" ${ARGN})
    if(NOT tests_SOURCES)
        file(GLOB tests_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*_test.cpp")
    endif()
    if(NOT tests_MAIN)
        set(tests_MAIN test_main)
    endif()
    add_executable(${name} ${tests_SOURCES})
    link_layers(${name} ${tests_LINKS} ${tests_MAIN} GTest::gmock warnings)
    register_suites(${name})
endfunction()
