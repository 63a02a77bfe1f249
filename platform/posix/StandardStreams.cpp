#include "platform/posix/StandardStreams.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <unistd.h>

namespace platform {

namespace {

/// poll() reports a terminal as writable for one byte, and a longer write then blocks while the user has stopped the
/// output. So a terminal is opened a second time, without blocking; the original's flags do not change.
class Unwaiting {
public:
    explicit Unwaiting(const int descriptor) : original_{descriptor} {
        std::array<char, PATH_MAX> name{};
        if (isatty(descriptor) == 0 || ttyname_r(descriptor, name.data(), name.size()) != 0) return;
        opened_ = open(name.data(), O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }
    Unwaiting(const Unwaiting&) = delete;
    Unwaiting& operator=(const Unwaiting&) = delete;
    ~Unwaiting() {
        if (opened_ >= 0) close(opened_);
    }

    int get() const { return opened_ >= 0 ? opened_ : original_; }

private:
    int original_;
    int opened_ = -1;
};

bool takesOutput(const int descriptor, const std::chrono::milliseconds patience) {
    pollfd asked{descriptor, POLLOUT, 0};
    int ready = 0;
    do {
        ready = poll(&asked, 1, static_cast<int>(patience.count()));
    } while (ready < 0 && errno == EINTR);
    // Not every system can wait for a terminal. A write that does not wait is tried all the same.
    const bool isTried = (asked.revents & POLLNVAL) != 0 && (fcntl(descriptor, F_GETFL) & O_NONBLOCK) != 0;
    return ready == 1 && (isTried || (asked.revents & POLLOUT) != 0);
}

ssize_t writeOnce(const int descriptor, const std::string_view piece) {
    ssize_t written = 0;
    do {
        written = write(descriptor, piece.data(), piece.size());
    } while (written < 0 && errno == EINTR);
    return written;
}

} // namespace

void prepareStandardStreams() {
    std::signal(SIGPIPE, SIG_IGN);
    // open() returns the lowest free descriptor, so each free standard descriptor is taken in turn.
    int opened = 0;
    do {
        opened = open("/dev/null", O_RDWR);
    } while (opened >= 0 && opened <= STDERR_FILENO);
    if (opened >= 0) close(opened);
}

void LineWriter::write(const std::string_view line) {
    std::string bytes;
    if (lineIsOpen_) bytes += '\n';
    bytes += line;
    bytes += '\n';
    const Unwaiting unwaiting{descriptor_};
    writePieces(unwaiting.get(), bytes);
}

void LineWriter::writePieces(const int descriptor, std::string_view bytes) {
    while (!bytes.empty() && isReady(descriptor)) {
        const auto written = writeOnce(descriptor, bytes.substr(0, PIPE_BUF));
        if (written <= 0) return;
        const auto length = static_cast<std::size_t>(written);
        lineIsOpen_ = bytes[length - 1] != '\n';
        bytes.remove_prefix(length);
    }
}

bool LineWriter::isReady(const int descriptor) {
    isRead_ = takesOutput(descriptor, isRead_ ? patience_ : std::chrono::milliseconds{0});
    return isRead_;
}

} // namespace platform
