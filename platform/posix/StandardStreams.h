#pragma once

#include <chrono>
#include <string_view>

// Standard input, output and error of a program whose reader may be slow, or gone, or never there.

namespace platform {

/// Makes the standard descriptors safe to use. Called first in main.
///
/// SIGPIPE is ignored from here on: a write to a pipe that nobody reads fails instead. And each of the three that the
/// program was started without becomes /dev/null: otherwise the first file or socket that it opens would take the
/// place, and what is printed would go there.
void prepareStandardStreams();

/// Writes lines to a descriptor, whole to whoever reads, and without failing. Whoever takes nothing for as long as the
/// writer's patience loses the line or its end, and is not waited for again until it has read. The descriptor's flags
/// stay as they are. A line whose end was dropped is closed before the next, so that two lines never run into one.
class LineWriter {
public:
    static constexpr std::chrono::milliseconds usualPatience{200};

    /// The descriptor is the caller's; it may be closed.
    explicit LineWriter(int descriptor, std::chrono::milliseconds patience = usualPatience)
        : descriptor_{descriptor}, patience_{patience} {}

    /// Writes `line` and a line feed.
    void write(std::string_view line);

private:
    void writePieces(int descriptor, std::string_view bytes);
    bool isReady(int descriptor);

    int descriptor_;
    std::chrono::milliseconds patience_;
    bool isRead_ = true;
    bool lineIsOpen_ = false;
};

} // namespace platform
