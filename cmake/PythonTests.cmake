# The system's Python, which finds the Debian packages. A build on Linux does not need it, so it may be installed later.
set(SYSTEM_PYTHON /usr/bin/python3)

# add_python_tests(<name> [ENVIRONMENT <variable>=<value>...] [TIMEOUT <seconds>]): each class with tests in a
# *_test.py of this folder becomes one test.
function(add_python_tests name)
    cmake_parse_arguments(tests "" "TIMEOUT" "ENVIRONMENT" ${ARGN})
    file(GLOB modules CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*_test.py")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${modules})
    foreach(module IN LISTS modules)
        cmake_path(GET module STEM stem)
        file(STRINGS "${module}" lines REGEX "^class |^    (def )?test_")
        foreach(line IN LISTS lines)
            if(line MATCHES "^class ([A-Za-z0-9_]+)")
                set(class "${CMAKE_MATCH_1}")
            elseif(NOT TEST "${name}: ${class}")
                add_test(
                    NAME "${name}: ${class}"
                    WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
                    COMMAND "${SYSTEM_PYTHON}" -B -m unittest -q "${stem}.${class}")
                set_tests_properties(
                    "${name}: ${class}" PROPERTIES TIMEOUT "${tests_TIMEOUT}" ENVIRONMENT "${tests_ENVIRONMENT}")
            endif()
        endforeach()
    endforeach()
endfunction()
