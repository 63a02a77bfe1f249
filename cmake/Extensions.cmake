# The extensions in the bundle.

set(DRIVER_MANAGER_EXTENSIONS
    ""
    CACHE PATH
          "The folder of the built .dext and .systemextension bundles; if empty, samples on Linux and none on a Mac")

# check_extensions(<folder>): stops the configuration, with one line for each problem, unless the folder contains the
# extensions and they pass all checks.
function(check_extensions folder)
    set(command
        "${SYSTEM_PYTHON}" -B "${CMAKE_SOURCE_DIR}/packaging/macos/check-extensions" --build "${DRIVER_MANAGER_BUILD}"
        "${folder}")
    if(NOT DRIVER_MANAGER_TEAM STREQUAL "")
        list(APPEND command --team "${DRIVER_MANAGER_TEAM}")
    endif()
    execute_process(COMMAND ${command} RESULT_VARIABLE result ERROR_VARIABLE problems)
    if(NOT result EQUAL 0)
        string(STRIP "${problems}" problems)
        string(REPLACE "\n" "\n " problems "${problems}") # CMake wraps lines unless they begin with a space
        message(FATAL_ERROR " ${problems}")
    endif()
endfunction()

# embed_extensions(<folder> <destination>): checks the extensions of the folder and makes them the contents of
# <destination>. The build is configured again when one of their files changes, appears, or disappears.
function(embed_extensions folder destination)
    check_extensions("${folder}")
    execute_process(
        COMMAND "${SYSTEM_PYTHON}" -B "${CMAKE_SOURCE_DIR}/packaging/macos/check-extensions" --list
        OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" names "${names}")
    file(REMOVE_RECURSE "${destination}")
    foreach(name IN LISTS names)
        file(COPY "${folder}/${name}" DESTINATION "${destination}")
        file(GLOB_RECURSE files CONFIGURE_DEPENDS "${folder}/${name}/*")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    endforeach()
endfunction()
