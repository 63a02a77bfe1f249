#include "platform/Log.h"

#include "tests/support/Descriptors.h"

namespace platform {
namespace {

using tests::ReplacedDescriptor;

std::string standardErrorOf(const std::string& line) {
    const auto pipe = tests::makePipe();
    {
        const ReplacedDescriptor replaced{STDERR_FILENO, pipe.writer.get()};
        writeLogLine(line);
    }
    return tests::readAvailable(pipe.reader.get());
}

TEST(ALoggedLine, IsOneLineOfStandardError) {
    EXPECT_EQ(standardErrorOf("Sysex identifier überall"), "Sysex identifier überall\n");
}

TEST(ALoggedLine, StaysOneLineWhateverItContains) {
    using namespace std::string_literals;
    EXPECT_EQ(standardErrorOf("a\nb\r\nc\td\0e\x1B[0m\x7F"s), "a\\nb\\r\\nc\td\\x00e\\x1b[0m\\x7f\n");
}

TEST(ALoggedLine, HasNoControlCharacterAboveAscii) {
    EXPECT_EQ(standardErrorOf("a\u0085b\u009Bc\u00A0\xC2"), "a\\x85b\\x9bc\u00A0\xC2\n");
}

TEST(ALoggedLine, IsDroppedIfStandardErrorIsClosed) {
    const auto pipe = tests::makePipe();
    {
        const ReplacedDescriptor closed{STDERR_FILENO, ReplacedDescriptor::closed};
        writeLogLine("one");
    }
    EXPECT_EQ(standardErrorOf("two"), "two\n");
}

} // namespace
} // namespace platform
