# Objective-C++ outside macOS is always compiled by clang.
set(CMAKE_OBJCXX_COMPILER "${CLANGXX}")
if(DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_OBJCXX_COMPILER_LAUNCHER "${CMAKE_CXX_COMPILER_LAUNCHER}")
endif()

# CMake has one setting for the precompiled headers of all languages. It keeps that of C++.
set(kept_extension "${CMAKE_PCH_EXTENSION}")
set(kept_prologue "${CMAKE_PCH_PROLOGUE}")
enable_language(OBJCXX)
set(CMAKE_PCH_EXTENSION "${kept_extension}")
set(CMAKE_PCH_PROLOGUE "${kept_prologue}")

set(CMAKE_OBJCXX_FLAGS_DEBUG "-O0 -g1")
