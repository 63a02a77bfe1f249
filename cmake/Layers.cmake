# A layer's headers are included by their path from the root, "model/SysExtInfo.h". So that a target sees the headers
# of the layers that it links and no others, each layer has an include root of its own: a folder of links.

# expose_headers(<target> <folder>): gives <target> an include root that holds the headers of <folder> alone.
function(expose_headers target folder)
    get_target_property(kind ${target} TYPE)
    set(scope PUBLIC)
    if(kind STREQUAL "INTERFACE_LIBRARY")
        set(scope INTERFACE)
    endif()
    set(root "${CMAKE_BINARY_DIR}/layers/${target}")
    file(GLOB headers CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/${folder}" "${CMAKE_SOURCE_DIR}/${folder}/*.h")
    file(REMOVE_RECURSE "${root}")
    file(MAKE_DIRECTORY "${root}/${folder}")
    foreach(header IN LISTS headers)
        file(CREATE_LINK "${CMAKE_SOURCE_DIR}/${folder}/${header}" "${root}/${folder}/${header}" SYMBOLIC)
    endforeach()
    target_include_directories(${target} ${scope} "${root}")
endfunction()

# add_layer(<target> FOLDER <folder> LINKS <target>... ): a static library of every .cpp in <folder>.
function(add_layer target)
    cmake_parse_arguments(layer "" "FOLDER" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/${layer_FOLDER}/*.cpp")
    list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
    add_library(${target} STATIC ${sources})
    target_link_libraries(${target} PUBLIC ${layer_LINKS} PRIVATE warnings)
    expose_headers(${target} ${layer_FOLDER})
endfunction()

# A duty is declared below the layers that ask for it, and carried out by a library beside them: so libraries refer to
# one another in both directions, and the linker has to look through them until nothing is missing. Apple's does so.
if(NOT APPLE)
    string(REPLACE "<LINK_LIBRARIES>" "-Wl,--start-group <LINK_LIBRARIES> -Wl,--end-group"
        CMAKE_CXX_LINK_EXECUTABLE "${CMAKE_CXX_LINK_EXECUTABLE}")
endif()
