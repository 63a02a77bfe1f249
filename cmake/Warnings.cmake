# One interface target carries the warnings; every layer and test links it.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
    -Wall -Wextra -Wpedantic -Werror
    -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
    -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wcast-align
    -Wformat=2 -Wimplicit-fallthrough -Wundef -Wunused)

# When it optimizes, g++ 12 takes the unused members of a std::variant for uninitialized values, and what std::string
# inserts for overlapping. clang and the sanitizers look for real ones.
target_compile_options(warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized;-Wno-restrict>)
