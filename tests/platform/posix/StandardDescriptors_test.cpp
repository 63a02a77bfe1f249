#include "platform/posix/StandardDescriptors.h"

#include "tests/support/Descriptors.h"

#include <initializer_list>
#include <sys/stat.h>
#include <sys/wait.h>

namespace platform {
namespace {

bool isNullDevice(const int descriptor) {
    struct stat opened {};
    struct stat device {};
    return fstat(descriptor, &opened) == 0 && stat("/dev/null", &device) == 0 && opened.st_rdev == device.st_rdev;
}

/// Runs `check` in a program that was started without the descriptors of `closed`, after it occupied them, and returns
/// whether it held there.
template <typename Check>
bool holdsInAProgramWithout(const std::initializer_list<int> closed, const Check check) {
    const auto child = fork();
    if (child == 0) {
        for (const int descriptor : closed)
            close(descriptor);
        occupyStandardDescriptors();
        _exit(check() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(AStandardDescriptor, ThatIsClosedBecomesTheNullDevice) {
    EXPECT_TRUE(
        holdsInAProgramWithout({0, 1, 2}, [] { return isNullDevice(0) && isNullDevice(1) && isNullDevice(2); }));
    EXPECT_TRUE(holdsInAProgramWithout({1}, [] { return isNullDevice(1); }));
}

TEST(AStandardDescriptor, ThatIsOpenStaysAsItIs) {
    const auto pipe = tests::makePipe();
    EXPECT_TRUE(holdsInAProgramWithout({1}, [&pipe] {
        dup2(pipe.writer.get(), STDERR_FILENO);
        occupyStandardDescriptors();
        return write(STDERR_FILENO, "kept", 4) == 4 && tests::readAvailable(pipe.reader.get()) == "kept";
    }));
}

TEST(AStandardDescriptor, CostsNoOther) {
    const int firstFree = dup(STDIN_FILENO);
    close(firstFree);
    EXPECT_TRUE(holdsInAProgramWithout({0, 1}, [firstFree] { return fcntl(firstFree, F_GETFD) == -1; }));
}

} // namespace
} // namespace platform
