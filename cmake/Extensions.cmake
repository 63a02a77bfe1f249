# The extensions that the bundle carries: the built ones, of which a Mac needs the real ones.

set(DRIVER_MANAGER_EXTENSIONS "" CACHE PATH
    "The folder of the built .dext and .systemextension bundles; without it, samples on Linux and none on a Mac")

# check_extensions(<folder>): stops the configuration unless the folder holds the extensions, and nothing is wrong with
# them; each thing that is wrong is told in a line of its own.
function(check_extensions folder)
    set(command "${SYSTEM_PYTHON}" -B "${CMAKE_SOURCE_DIR}/packaging/macos/check-extensions"
        --build "${DRIVER_MANAGER_BUILD}" "${folder}")
    if(NOT DRIVER_MANAGER_TEAM STREQUAL "")
        list(APPEND command --team "${DRIVER_MANAGER_TEAM}")
    endif()
    execute_process(COMMAND ${command} RESULT_VARIABLE result ERROR_VARIABLE problems)
    if(NOT result EQUAL 0)
        string(STRIP "${problems}" problems)
        string(REPLACE "\n" "\n " problems "${problems}") # a line that begins with a space is shown as it is
        message(FATAL_ERROR " ${problems}")
    endif()
endfunction()

# embed_extensions(<folder> <destination>): makes <destination> hold the extensions of the folder, checked, and nothing
# else. Configuring does it, and is done anew when a file of theirs changes, comes or goes.
function(embed_extensions folder destination)
    check_extensions("${folder}")
    execute_process(COMMAND "${SYSTEM_PYTHON}" -B "${CMAKE_SOURCE_DIR}/packaging/macos/check-extensions" --list
        OUTPUT_VARIABLE names COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" names "${names}")
    file(REMOVE_RECURSE "${destination}")
    foreach(name IN LISTS names)
        file(COPY "${folder}/${name}" DESTINATION "${destination}")
        file(GLOB_RECURSE files CONFIGURE_DEPENDS "${folder}/${name}/*")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${files})
    endforeach()
endfunction()
