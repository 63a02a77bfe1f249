find_package(GTest QUIET)
if(NOT GTest_FOUND) # a Mac has none; it is given the one that Debian 12 has
    include(FetchContent)
    set(INSTALL_GTEST OFF)
    FetchContent_Declare(googletest
        URL https://github.com/google/googletest/archive/refs/tags/release-1.12.1.tar.gz
        URL_HASH SHA256=81964fe578e9bd7c94dfdb09c8e4d6e6759e19967e397dbea48d1c10e45d0df2
        DOWNLOAD_EXTRACT_TIMESTAMP ON
        SYSTEM)
    FetchContent_MakeAvailable(googletest)
endif()
include(GoogleTest)

# The precompiled GoogleTest headers, built once and reused by every test program.
add_library(test_main STATIC "${CMAKE_SOURCE_DIR}/tests/support/test_main.cpp")
target_link_libraries(test_main PUBLIC GTest::gtest GTest::gmock PRIVATE warnings)
expose_headers(test_main tests/support)

# add_unit_tests(<name> LINKS <target>... [SOURCES <file>...] [MAIN <target>]): one test program of every *_test.cpp in
# this folder. MAIN is the library that holds its main function, test_main unless told otherwise.
function(add_unit_tests name)
    cmake_parse_arguments(tests "" "MAIN" "LINKS;SOURCES" ${ARGN})
    if(NOT tests_SOURCES)
        file(GLOB tests_SOURCES CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*_test.cpp")
    endif()
    if(NOT tests_MAIN)
        set(tests_MAIN test_main)
    endif()
    add_executable(${name} ${tests_SOURCES})
    target_link_libraries(${name} PRIVATE ${tests_LINKS} ${tests_MAIN} GTest::gmock warnings)
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h> <gmock/gmock.h>)
    gtest_discover_tests(${name} TEST_PREFIX "${name}: " DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()
