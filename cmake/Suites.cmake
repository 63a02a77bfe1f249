# ctest reads this file after the build.

# add_suites(<name> <program> <emulator>): adds a test "<name>: <suite>" for each suite that the program lists. It
# lists them without the emulator, which may start a display.
function(add_suites name program emulator)
    if(NOT EXISTS "${program}")
        add_test("${name}: not built" "${program}")
        return()
    endif()
    execute_process(
        COMMAND "${program}" --gtest_list_tests OUTPUT_VARIABLE listed RESULT_VARIABLE result ERROR_VARIABLE complaint)
    string(REGEX MATCHALL "\n[^ \n]+\\." suites "\n${listed}")
    if(NOT result EQUAL 0 OR suites STREQUAL "")
        message(FATAL_ERROR "${program} does not list its tests: ${complaint}")
    endif()
    get_filename_component(folder "${program}" DIRECTORY)
    set(seconds 300)
    if(DEFINED ENV{DRIVER_MANAGER_LONG})
        set(seconds 7200)
    endif()
    foreach(suite IN LISTS suites)
        string(STRIP "${suite}" suite)
        string(REGEX REPLACE "\\.$" "" title "${suite}")
        add_test("${name}: ${title}" ${emulator} "${program}" "--gtest_filter=${suite}*" --gtest_brief=1)
        set_tests_properties("${name}: ${title}" PROPERTIES TIMEOUT ${seconds} WORKING_DIRECTORY "${folder}")
    endforeach()
endfunction()
