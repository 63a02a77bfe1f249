#include "platform/Output.h"

#include "tests/support/Descriptors.h"

namespace platform {
namespace {

using tests::ReplacedDescriptor;

TEST(APrintedLine, GoesToStandardOutput) {
    const auto pipe = tests::makePipe();
    {
        const ReplacedDescriptor replaced{STDOUT_FILENO, pipe.writer.get()};
        printLine("one");
        printLine("two");
    }
    EXPECT_EQ(tests::readAvailable(pipe.reader.get()), "one\ntwo\n");
}

TEST(APrintedLine, ComesAgainAfterStandardOutputWasClosedForAWhile) {
    const auto pipe = tests::makePipe();
    {
        const ReplacedDescriptor closed{STDOUT_FILENO, ReplacedDescriptor::closed};
        printLine("one");
    }
    {
        const ReplacedDescriptor replaced{STDOUT_FILENO, pipe.writer.get()};
        printLine("two");
    }
    EXPECT_EQ(tests::readAvailable(pipe.reader.get()), "two\n");
}

} // namespace
} // namespace platform
