# The application bundle: the folder "Driver Manager.app" in the build tree.

include(BuildNumber)
include(Extensions)

# copy_tree(<from> <to> <file>...): copies these files of <from> to <to>, and removes all others there. This happens
# when the build is configured, so the build is configured again when a file changes, appears, or disappears.
function(copy_tree from to)
    file(GLOB_RECURSE strays LIST_DIRECTORIES true RELATIVE "${to}" "${to}/*")
    foreach(file IN LISTS ARGN)
        configure_file("${from}/${file}" "${to}/${file}" COPYONLY)
        while(file)
            list(REMOVE_ITEM strays "${file}")
            cmake_path(GET file PARENT_PATH file)
        endwhile()
    endforeach()
    foreach(stray IN LISTS strays)
        file(REMOVE_RECURSE "${to}/${stray}")
    endforeach()
endfunction()

# assemble_bundle(<target>): makes <target> the executable of the bundle, and assembles the rest of the bundle:
#   Driver Manager.app/Contents/Info.plist
#                               MacOS/Driver Manager
#                               Resources/                  the images
#                               Library/SystemExtensions/   the extensions, named after their identifiers
function(assemble_bundle target)
    check_build_number("${DRIVER_MANAGER_BUILD}")
    set(contents "${CMAKE_BINARY_DIR}/Driver Manager.app/Contents")
    set_target_properties(
        ${target} PROPERTIES OUTPUT_NAME "Driver Manager" RUNTIME_OUTPUT_DIRECTORY "${contents}/MacOS")
    configure_file("${CMAKE_SOURCE_DIR}/packaging/macos/Info.plist.in" "${contents}/Info.plist" @ONLY)

    set(icons "${CMAKE_SOURCE_DIR}/assets/icons")
    if(APPLE)
        string(APPEND icons "/rendered")
    endif()
    file(GLOB images CONFIGURE_DEPENDS RELATIVE "${icons}" "${icons}/*.svg" "${icons}/*.pdf" "${icons}/*.icns")
    copy_tree("${icons}" "${contents}/Resources" ${images})

    assemble_extensions("${contents}/Library/SystemExtensions")
    if(NOT APPLE)
        seal_application(${target} "${CMAKE_BINARY_DIR}/Driver Manager.app")
    endif()
endfunction()

# On a Mac there are no samples: the window would offer to activate them, and no Mac can.
function(assemble_extensions destination)
    if(NOT DRIVER_MANAGER_EXTENSIONS STREQUAL "")
        embed_extensions("${DRIVER_MANAGER_EXTENSIONS}" "${destination}")
    elseif(APPLE)
        file(REMOVE_RECURSE "${destination}")
        message(STATUS "The application carries no extensions: DRIVER_MANAGER_EXTENSIONS names no folder")
    else()
        set(samples "${CMAKE_SOURCE_DIR}/assets/extensions")
        file(GLOB_RECURSE files CONFIGURE_DEPENDS RELATIVE "${samples}" "${samples}/*")
        copy_tree("${samples}" "${destination}" ${files})
    endif()
endfunction()

# seal_application(<target> <application>): seals the extensions, then the bundle, each time its executable is linked:
# also after a change of another file, and after configuring, which may have removed one. The seals tell the simulator
# their team and their entitlements. A Mac has real signatures.
function(seal_application target application)
    set(configured "${CMAKE_CURRENT_BINARY_DIR}/${target}_configured")
    file(TOUCH "${configured}")
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${configured}" "$<TARGET_FILE:seal>")
    file(GLOB extensions "${application}/Contents/Library/SystemExtensions/*")
    foreach(bundle IN LISTS extensions ITEMS "${application}")
        set(entitlement com.apple.developer.driverkit)
        if(bundle MATCHES "\\.systemextension$")
            set(entitlement com.apple.security.application-groups=KELVRA0001.com.kelvra.ip-camera)
        elseif(bundle STREQUAL application)
            set(entitlement com.apple.developer.system-extension.install)
        endif()
        add_custom_command(
            TARGET ${target}
            POST_BUILD
            COMMAND seal "${bundle}" --team KELVRA0001 --entitlement ${entitlement}
            VERBATIM)
    endforeach()
endfunction()
