# The application as the system finds it: a folder "Driver Manager.app" in the build tree, the same on every system.

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
    set_target_properties(${target} PROPERTIES
        OUTPUT_NAME "Driver Manager" RUNTIME_OUTPUT_DIRECTORY "${contents}/MacOS")
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

# seal_application(<target> <application>): has the build seal the extensions, then the bundle. The seals tell the
# simulator their team and their entitlements. A Mac has real signatures.
function(seal_application target application)
    set(seals "")
    file(GLOB extensions "${application}/Contents/Library/SystemExtensions/*")
    foreach(extension IN LISTS extensions)
        set(entitlement com.apple.developer.driverkit)
        if(extension MATCHES "\\.systemextension$")
            set(entitlement com.apple.security.application-groups=KELVRA0001.com.kelvra.ip-camera)
        endif()
        seal_bundle("${extension}" ${entitlement})
        seal_of("${extension}" seal)
        list(APPEND seals "${seal}")
    endforeach()
    seal_bundle("${application}" com.apple.developer.system-extension.install ${target} ${seals})
    seal_of("${application}" seal)
    add_custom_target(${target}_seal ALL DEPENDS "${seal}")
endfunction()

# seal_of(<bundle> <result>): the file of its seal, beside its Info.plist. A driver can be flat, without a Contents
# folder.
function(seal_of bundle result)
    set(contents "${bundle}")
    if(IS_DIRECTORY "${bundle}/Contents")
        string(APPEND contents "/Contents")
    endif()
    set(${result} "${contents}/_SimulatedSignature.plist" PARENT_SCOPE)
endfunction()

# seal_bundle(<bundle> <entitlement> <dependency>...): adds the step that seals one bundle, after its files and the
# dependencies. Configuring removes an earlier seal, because files may have been removed since.
function(seal_bundle bundle entitlement)
    seal_of("${bundle}" seal)
    file(REMOVE "${seal}")
    file(GLOB_RECURSE files "${bundle}/*")
    list(FILTER files EXCLUDE REGEX "/MacOS/")
    add_custom_command(OUTPUT "${seal}"
        COMMAND seal "${bundle}" --team KELVRA0001 --entitlement ${entitlement}
        DEPENDS seal ${files} ${ARGN}
        VERBATIM)
endfunction()
