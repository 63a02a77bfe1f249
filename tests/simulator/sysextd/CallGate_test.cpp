#include "simulator/sysextd/CallGate.h"

#include "simulator/core/Limits.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace simulator::tests {

namespace {

class ACallGate : public testing::Test {
protected:
    /// How many of a number of calls are let through.
    std::size_t admitted(const QString& client, std::size_t calls) {
        std::size_t count = 0;
        for (std::size_t call = 0; call < calls; ++call) {
            if (gate.admits(client)) ++count;
        }
        return count;
    }

    int argc = 1;
    char name[6] = "tests";
    char* argv[2] = {name, nullptr};
    QCoreApplication application{argc, argv};
    CallGate gate;
};

TEST_F(ACallGate, LetsThroughNoMoreThanItsLimitAtOnce) {
    EXPECT_EQ(admitted("one", limits::callsAtOnce + 7), limits::callsAtOnce);
}

TEST_F(ACallGate, CountsEachClientByItself) {
    ASSERT_EQ(admitted("one", limits::callsAtOnce + 1), limits::callsAtOnce);
    EXPECT_EQ(admitted("other", 1), 1U);
}

TEST_F(ACallGate, CountsAnewWhenTheCallsThatWaitedAreDone) {
    ASSERT_EQ(admitted("one", limits::callsAtOnce + 1), limits::callsAtOnce);
    QCoreApplication::processEvents();
    EXPECT_EQ(admitted("one", limits::callsAtOnce + 1), limits::callsAtOnce);
}

} // namespace

} // namespace simulator::tests
