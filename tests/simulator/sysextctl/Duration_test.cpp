#include "simulator/sysextctl/Duration.h"
#include "tests/simulator/support/Printing.h"

namespace simulator::ctl {

TEST(ADuration, IsANumberWithAUnitOrInSeconds) {
    EXPECT_EQ(milliseconds(u"90"), 90'000);
    EXPECT_EQ(milliseconds(u"90s"), 90'000);
    EXPECT_EQ(milliseconds(u"250ms"), 250);
    EXPECT_EQ(milliseconds(u"1.5m"), 90'000);
    EXPECT_EQ(milliseconds(u"2h"), 7'200'000);
    EXPECT_EQ(milliseconds(u"3d"), 259'200'000);
    EXPECT_EQ(milliseconds(u"0"), 0);
}

TEST(ADuration, IsNothingElse) {
    for (const auto* text :
         {u"", u"s", u"-1", u"+1", u"1 s", u"1e3", u".5", u"5.", u"0x10", u"1w", u"nan", u"inf", u"\u0663", u"90s\n"})
        EXPECT_EQ(milliseconds(text), std::nullopt) << QString::fromUtf16(text).toStdString();
}

TEST(ADuration, IsAtMostAThousandYears) {
    EXPECT_EQ(milliseconds(u"366000d"), 366'000LL * 24 * 60 * 60 * 1000);
    EXPECT_EQ(milliseconds(u"366001d"), std::nullopt);
    EXPECT_EQ(milliseconds(QString{400, u'9'}), std::nullopt);
}

TEST(SecondsInPrint, HaveThreeDecimals) {
    EXPECT_EQ(inSeconds(0), "0.000");
    EXPECT_EQ(inSeconds(90'250), "90.250");
}

} // namespace simulator::ctl
