#include "platform/posix/StandardStreams.h"

#include "platform/Output.h"
#include "tests/support/Descriptors.h"

#include <cstdio>
#include <dlfcn.h>
#include <initializer_list>
#include <string>
#include <sys/wait.h>
#include <termios.h>
#include <thread>

namespace {

bool pollKnowsTerminals = true;

} // namespace

/// Replaces the system's function: some versions of macOS cannot wait for a terminal.
extern "C" int poll(pollfd* const asked, const nfds_t count, const int patience) {
    static const auto systems = reinterpret_cast<decltype(&poll)>(dlsym(RTLD_NEXT, "poll"));
    if (pollKnowsTerminals || isatty(asked->fd) == 0) return systems(asked, count, patience);
    asked->revents = POLLNVAL;
    return 1;
}

namespace platform {
namespace {

using tests::isNullDevice;
using tests::makePipe;
using tests::makeTerminal;
using tests::readAvailable;
using tests::ReplacedDescriptor;

/// Starts a program without the descriptors of `closed`. The program prepares them and runs `check`. Returns the result
/// of `check`.
template <typename Check>
bool holdsInAProgramWithout(const std::initializer_list<int> closed, const Check check) {
    const auto child = fork();
    if (child == 0) {
        for (const int descriptor : closed)
            close(descriptor);
        prepareStandardStreams();
        _exit(check() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

const std::string longLine(200'000, 'x');

TEST(ALine, CanHoldAnyBytesOrNoneAndEndsWithALineFeed) {
    using namespace std::string_view_literals;
    const auto pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
    writer.write("a\0b\xFF"sv);
    writer.write("");
    EXPECT_EQ(readAvailable(pipe.reader.get()), std::string("a\0b\xFF\n\n"sv));
}

TEST(ALine, IsDroppedByAClosedDescriptorAndByOneForReading) {
    auto pipe = makePipe();
    const int number = pipe.writer.get();
    LineWriter{pipe.reader.get()}.write("one");
    pipe.writer.close();
    LineWriter{number}.write("one");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "");
}

TEST(ALine, IsWrittenWholeToAFile) {
    std::FILE* const file = std::tmpfile();
    LineWriter{fileno(file)}.write(longLine);
    EXPECT_EQ(lseek(fileno(file), 0, SEEK_END), static_cast<off_t>(longLine.size() + 1));
    std::fclose(file);
}

TEST(ALine, ArrivesWholeAtAReaderThatReads) {
    const auto pipe = makePipe();
    std::string taken;
    std::thread reader{[&] {
        while (taken.size() <= longLine.size())
            taken += readAvailable(pipe.reader.get());
    }};
    LineWriter{pipe.writer.get(), std::chrono::minutes{1}}.write(longLine);
    reader.join();
    EXPECT_EQ(taken, longLine + '\n');
}

TEST(ALine, IsDroppedByAPipeThatNobodyReads) {
    auto pipe = makePipe();
    pipe.reader.close();
    EXPECT_TRUE(holdsInAProgramWithout({}, [&pipe] {
        LineWriter{pipe.writer.get()}.write("one");
        return true;
    }));
}

class AFullPipe : public testing::Test {
protected:
    /// Writes so many lines of a kilobyte that the pipe is full, and that waiting for each would take half an hour.
    void fill() {
        for (int i = 0; i < 10'000; ++i)
            writer.write(std::string(1023, 'x'));
    }
    std::string read() const { return readAvailable(pipe.reader.get()); }

    const tests::Pipe pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
};

TEST_F(AFullPipe, IsWaitedForOnce) {
    fill();
    const auto taken = read();
    EXPECT_LT(taken.size(), 10'000U * 1024U);
    EXPECT_EQ(taken.size() % 1024, 0U);
}

TEST_F(AFullPipe, DropsTheEndOfALongLine) {
    writer.write(longLine);
    const auto taken = read();
    EXPECT_GT(taken.size(), 0U);
    EXPECT_EQ(taken, longLine.substr(0, taken.size()));
}

TEST_F(AFullPipe, NeverJoinsTwoLines) {
    writer.write(longLine);
    read();
    writer.write("next");
    EXPECT_EQ(read(), "\nnext\n");
    writer.write("and next");
    EXPECT_EQ(read(), "and next\n");
}

TEST_F(AFullPipe, TakesLinesAgainOnceItIsRead) {
    fill();
    read();
    writer.write("again");
    EXPECT_EQ(read(), "again\n");
}

TEST(ATerminal, TakesLines) {
    const auto terminal = makeTerminal();
    LineWriter{terminal.program.get()}.write("one");
    EXPECT_EQ(readAvailable(terminal.screen.get()), "one\r\n");
}

TEST(ATerminal, TakesLinesEvenIfPollCannotWaitForIt) {
    const auto terminal = makeTerminal();
    pollKnowsTerminals = false;
    LineWriter{terminal.program.get()}.write("one");
    pollKnowsTerminals = true;
    EXPECT_EQ(readAvailable(terminal.screen.get()), "one\r\n");
}

TEST(ATerminal, ThatNobodyReadsBlocksNothing) {
    const auto terminal = makeTerminal();
    LineWriter writer{terminal.program.get()};
    for (int i = 0; i < 10'000; ++i)
        writer.write(std::string(100, 'x'));
    EXPECT_LT(readAvailable(terminal.screen.get()).size(), 10'000U * 102U);
}

TEST(ATerminal, WithStoppedOutputBlocksNothing) {
    const auto terminal = makeTerminal();
    tcflow(terminal.program.get(), TCOOFF);
    LineWriter{terminal.program.get()}.write("one");
    EXPECT_EQ(readAvailable(terminal.screen.get()), "");
}

TEST(ADescriptor, KeepsItsFlags) {
    const auto pipe = makePipe();
    const auto terminal = makeTerminal();
    for (const int descriptor : {pipe.writer.get(), terminal.program.get()}) {
        const int before = fcntl(descriptor, F_GETFL);
        LineWriter{descriptor}.write(longLine);
        EXPECT_EQ(fcntl(descriptor, F_GETFL), before);
    }
}

TEST(APrintedLine, GoesToStandardOutput) {
    const auto pipe = makePipe();
    {
        const ReplacedDescriptor replaced{STDOUT_FILENO, pipe.writer.get()};
        printLine("one");
        printLine("two");
    }
    EXPECT_EQ(readAvailable(pipe.reader.get()), "one\ntwo\n");
}

TEST(APrintedLine, IsWrittenAgainAfterStandardOutputWasClosed) {
    const auto pipe = makePipe();
    {
        const ReplacedDescriptor closed{STDOUT_FILENO, ReplacedDescriptor::closed};
        printLine("one");
    }
    {
        const ReplacedDescriptor replaced{STDOUT_FILENO, pipe.writer.get()};
        printLine("two");
    }
    EXPECT_EQ(readAvailable(pipe.reader.get()), "two\n");
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
        prepareStandardStreams();
        return write(STDERR_FILENO, "kept", 4) == 4 && tests::readAvailable(pipe.reader.get()) == "kept";
    }));
}

TEST(AStandardDescriptor, UsesNoOtherDescriptor) {
    const int firstFree = dup(STDIN_FILENO);
    close(firstFree);
    EXPECT_TRUE(holdsInAProgramWithout({0, 1}, [firstFree] { return fcntl(firstFree, F_GETFD) == -1; }));
}

} // namespace
} // namespace platform
