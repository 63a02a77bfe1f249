#pragma once

#include <chrono>
#include <string_view>

// Standard streams whose reader may be slow, gone, or missing.

namespace platform {

/// Makes the standard descriptors safe to use. Call it first in main.
///
/// It ignores SIGPIPE, so that a write to a pipe without a reader only fails. It opens /dev/null for each standard
/// descriptor that is closed; otherwise the next opened file or socket would take its place and receive the output.
void prepareStandardStreams();

/// Writes lines to a descriptor; never fails. If the reader takes nothing for the time of `patience`, the rest of the
/// line is dropped, and the writer does not wait again until the reader has read. After a dropped rest, the next line
/// starts with a line feed. The descriptor's flags do not change.
class LineWriter {
public:
    static constexpr std::chrono::milliseconds usualPatience{200};

    /// The caller owns the descriptor, which may be closed.
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
