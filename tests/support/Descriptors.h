#pragma once

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

// The other end of an output.

namespace tests {

/// Owns a file descriptor and closes it in its destructor or earlier.
class Descriptor {
public:
    explicit Descriptor(const int number) : number_{number} {}
    Descriptor(Descriptor&& other) noexcept : number_{std::exchange(other.number_, -1)} {}
    ~Descriptor() { close(); }

    int get() const { return number_; }
    void close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

/// Bytes go from the writer to the reader; a program under test gets one end. When every writer is closed, the
/// reader sees the end, and a write without a reader fails.
struct Pipe {
    Descriptor reader;
    Descriptor writer;
};

/// A pipe with both ends open, in blocking mode.
inline Pipe makePipe() {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(pipe(ends.data()), 0);
    return {Descriptor{ends[0]}, Descriptor{ends[1]}};
}

/// A terminal: what a program writes can be read from the screen.
struct Terminal {
    Descriptor screen;
    Descriptor program;
};

/// A new pseudoterminal. Closing the screen hangs up on the program.
inline Terminal makeTerminal() {
    Descriptor screen{posix_openpt(O_RDWR | O_NOCTTY)};
    EXPECT_EQ(grantpt(screen.get()), 0);
    EXPECT_EQ(unlockpt(screen.get()), 0);
    const char* const name = ptsname(screen.get());
    Descriptor program{open(name, O_RDWR | O_NOCTTY)};
    return {std::move(screen), std::move(program)};
}

/// A listening socket at `path`. Clients wait until they are accepted, and for every answer.
inline Descriptor listenAt(const std::string& path) {
    Descriptor listener{socket(AF_UNIX, SOCK_STREAM, 0)};
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(std::data(address.sun_path), sizeof address.sun_path - 1);
    EXPECT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(listener.get(), 1), 0);
    return listener;
}

/// Replaces a descriptor such as standard output by another, or closes it. The destructor restores the old
/// descriptor.
class ReplacedDescriptor {
public:
    /// Instead of a replacement: the descriptor is closed.
    static constexpr int closed = -1;

    ReplacedDescriptor(const int place, const int replacement) : place_{place}, saved_{dup(place)} {
        if (replacement == closed) {
            ::close(place);
        } else {
            dup2(replacement, place);
        }
    }
    ~ReplacedDescriptor() { dup2(saved_.get(), place_); }

private:
    int place_;
    Descriptor saved_;
};

/// Whether the descriptor is open on /dev/null.
inline bool isNullDevice(const int descriptor) {
    struct stat opened {};
    struct stat device {};
    return fstat(descriptor, &opened) == 0 && stat("/dev/null", &device) == 0 && opened.st_rdev == device.st_rdev;
}

/// Everything that can be read without waiting.
inline std::string readAvailable(const int descriptor) {
    std::string text;
    pollfd asked{descriptor, POLLIN, 0};
    while (poll(&asked, 1, 0) == 1 && (asked.revents & POLLIN) != 0) {
        std::array<char, 65536> buffer{};
        const auto length = read(descriptor, buffer.data(), buffer.size());
        if (length <= 0) break;
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    return text;
}

} // namespace tests
