# Every layer and test links this target.
add_library(warnings INTERFACE)
target_compile_options(
    warnings
    INTERFACE -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
              -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wcast-align -Wformat=2
              -Wimplicit-fallthrough -Wundef -Wunused)

# With optimization, g++ 12 reports unused members of a std::variant as uninitialized, and insertions into a std::string
# as overlapping. clang and the sanitizers find the real cases.
target_compile_options(warnings INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized;-Wno-restrict>)
