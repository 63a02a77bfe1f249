#include "platform/posix/LineWriter.h"

#include "tests/support/Descriptors.h"

#include <csignal>
#include <cstdio>
#include <string>
#include <termios.h>

namespace platform {
namespace {

using tests::makePipe;
using tests::makeTerminal;
using tests::readAvailable;

const std::string longLine(200'000, 'x');

TEST(ALine, EndsWithALineFeed) {
    const auto pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
    writer.write("one");
    writer.write("");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "one\n\n");
}

TEST(ALine, MayHoldAnyBytes) {
    using namespace std::string_view_literals;
    const auto pipe = makePipe();
    LineWriter{pipe.writer.get()}.write("a\0b\xFF"sv);
    EXPECT_EQ(readAvailable(pipe.reader.get()), std::string("a\0b\xFF\n"sv));
}

TEST(ALine, IsDroppedByAClosedDescriptor) {
    auto pipe = makePipe();
    const int number = pipe.writer.get();
    pipe.writer.close();
    LineWriter{number}.write("one");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "");
}

TEST(ALine, IsDroppedByADescriptorForReading) {
    const auto pipe = makePipe();
    LineWriter{pipe.reader.get()}.write("one");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "");
}

TEST(ALine, IsWrittenWholeToAFile) {
    std::FILE* const file = std::tmpfile();
    LineWriter{fileno(file)}.write(longLine);
    EXPECT_EQ(lseek(fileno(file), 0, SEEK_END), static_cast<off_t>(longLine.size() + 1));
    std::fclose(file);
}

class ABrokenPipe : public testing::Test {
protected:
    ABrokenPipe() { pipe.reader.close(); }
    void TearDown() override { std::signal(SIGPIPE, SIG_DFL); }

    tests::Pipe pipe = makePipe();
};

TEST_F(ABrokenPipe, RaisesNoSignal) {
    static volatile std::sig_atomic_t raised = 0;
    std::signal(SIGPIPE, [](int) { raised = 1; });
    LineWriter{pipe.writer.get()}.write("one");
    EXPECT_EQ(raised, 0);
}

TEST_F(ABrokenPipe, LeavesTheSignalAsTheProgramWantsIt) {
    struct sigaction before {};
    before.sa_handler = [](int) {};
    sigaction(SIGPIPE, &before, nullptr);
    LineWriter{pipe.writer.get()}.write("one");
    struct sigaction after {};
    sigaction(SIGPIPE, nullptr, &after);
    EXPECT_EQ(after.sa_handler, before.sa_handler);
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    EXPECT_EQ(sigismember(&blocked, SIGPIPE), 0);
}

TEST_F(ABrokenPipe, IsQuietAlsoWhereTheSignalIsIgnored) {
    std::signal(SIGPIPE, SIG_IGN);
    LineWriter{pipe.writer.get()}.write("one");
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST_F(ABrokenPipe, LeavesASignalThatWaitedAlready) {
    sigset_t pipeSignal;
    sigemptyset(&pipeSignal);
    sigaddset(&pipeSignal, SIGPIPE);
    sigset_t before;
    pthread_sigmask(SIG_BLOCK, &pipeSignal, &before);
    raise(SIGPIPE);
    LineWriter{pipe.writer.get()}.write("one");
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 1);
    int taken = 0;
    sigwait(&pipeSignal, &taken);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(AFullPipe, DropsALineWithoutWaiting) {
    const auto pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
    const std::string kilobyte(1023, 'x');
    for (int i = 0; i < 1000; ++i)
        writer.write(kilobyte);
    const auto taken = readAvailable(pipe.reader.get());
    EXPECT_LT(taken.size(), 1000U * 1024U);
    EXPECT_EQ(taken.size() % 1024, 0U);
}

TEST(AFullPipe, DropsTheEndOfALongLine) {
    const auto pipe = makePipe();
    LineWriter{pipe.writer.get()}.write(longLine);
    const auto taken = readAvailable(pipe.reader.get());
    EXPECT_GT(taken.size(), 0U);
    EXPECT_EQ(taken, longLine.substr(0, taken.size()));
}

TEST(AFullPipe, NeverGluesTwoLinesTogether) {
    const auto pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
    writer.write(longLine);
    readAvailable(pipe.reader.get());
    writer.write("next");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "\nnext\n");
    writer.write("and next");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "and next\n");
}

TEST(AFullPipe, TakesLinesAgainOnceItIsRead) {
    const auto pipe = makePipe();
    LineWriter writer{pipe.writer.get()};
    const std::string kilobyte(1023, 'x');
    for (int i = 0; i < 1000; ++i)
        writer.write(kilobyte);
    readAvailable(pipe.reader.get());
    writer.write("again");
    EXPECT_EQ(readAvailable(pipe.reader.get()), "again\n");
}

TEST(ADescriptor, KeepsItsFlags) {
    const auto pipe = makePipe();
    const int before = fcntl(pipe.writer.get(), F_GETFL);
    LineWriter{pipe.writer.get()}.write(longLine);
    EXPECT_EQ(fcntl(pipe.writer.get(), F_GETFL), before);
}

TEST(ATerminal, TakesLines) {
    const auto terminal = makeTerminal();
    LineWriter{terminal.program.get()}.write("one");
    EXPECT_EQ(readAvailable(terminal.screen.get()), "one\r\n");
}

TEST(ATerminal, ThatNobodyReadsStallsNothing) {
    const auto terminal = makeTerminal();
    LineWriter writer{terminal.program.get()};
    const std::string line(100, 'x');
    for (int i = 0; i < 10'000; ++i)
        writer.write(line);
    EXPECT_LT(readAvailable(terminal.screen.get()).size(), 10'000U * 102U);
}

TEST(ATerminal, ThatAPersonStoppedStallsNothing) {
    const auto terminal = makeTerminal();
    tcflow(terminal.program.get(), TCOOFF);
    LineWriter{terminal.program.get()}.write("one");
    EXPECT_EQ(readAvailable(terminal.screen.get()), "");
}

TEST(ATerminal, KeepsItsFlags) {
    const auto terminal = makeTerminal();
    const int before = fcntl(terminal.program.get(), F_GETFL);
    LineWriter{terminal.program.get()}.write("one");
    EXPECT_EQ(fcntl(terminal.program.get(), F_GETFL), before);
}

} // namespace
} // namespace platform
