#pragma once

#include <string_view>

namespace platform {

/// Writes lines to a descriptor without ever waiting for whoever reads it, and without failing: a line or the end of a
/// line that the descriptor does not take at once is dropped. The descriptor's flags stay as they are, and a reader
/// that has gone raises no signal. A line whose end was dropped is closed before the next, so that two lines never
/// run into one.
class LineWriter {
public:
    /// The descriptor is the caller's; it may be closed.
    explicit LineWriter(int descriptor) : descriptor_{descriptor} {}

    /// Writes `line` and a line feed.
    void write(std::string_view line);

private:
    void writePieces(int descriptor, std::string_view bytes);

    int descriptor_;
    bool lineIsOpen_ = false;
};

} // namespace platform
