# The application compares builds as signed 64-bit integers, and stops if its own is not one.

# check_build_number(<text>): stops the configuration unless <text> is a plain decimal integer in range.
function(check_build_number text)
    # CMake wraps lines unless they begin with a space.
    set(subject " Info.plist: CFBundleVersion, from DRIVER_MANAGER_BUILD, is \"${text}\", but")
    if(NOT text MATCHES "^[0-9]+$")
        message(FATAL_ERROR "${subject} must be a plain decimal integer such as 2105")
    endif()
    string(REGEX REPLACE "^0+" "" digits "${text}")
    string(LENGTH "${digits}" length)
    if(length GREATER 19 OR (length EQUAL 19 AND digits STRGREATER "9223372036854775807"))
        message(FATAL_ERROR "${subject} must not exceed 9223372036854775807")
    endif()
endfunction()

# As a script: cmake -D DRIVER_MANAGER_BUILD=<text> -P BuildNumber.cmake
if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
    check_build_number("${DRIVER_MANAGER_BUILD}")
endif()
