#include "platform/linux/ScenePainter.h"

#include "platform/linux/Appearance.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <QFontInfo>
#include <QFontMetricsF>

#include <cmath>

namespace platform {
namespace {

class TheMetrics : public testing::Test {
protected:
    double width(const char* text, const ui::Font font) const { return metrics_.textSize(text, font).width; }

    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
    QtMetrics metrics_{images_};
};

TEST_F(TheMetrics, AreThoseOfInterInBothWeights) {
    for (const ui::FontWeight weight : {ui::FontWeight::regular, ui::FontWeight::semibold}) {
        const QFontInfo found{toQFont({ui::TextStyle::body, weight})};
        EXPECT_EQ(found.family(), "Inter");
        EXPECT_EQ(found.weight(), weight == ui::FontWeight::semibold ? QFont::DemiBold : QFont::Normal);
    }
}

TEST_F(TheMetrics, AreInPixelsThatDoNotDependOnTheDesktopsResolution) {
    EXPECT_EQ(toQFont(ui::Font::title3).pixelSize(), 15);
    EXPECT_EQ(toQFont(ui::Font::body).pixelSize(), 13);
    EXPECT_EQ(toQFont(ui::Font::callout).pixelSize(), 12);
}

TEST_F(TheMetrics, GrowWithTheSizeOfTheTextAndNotInWholePixels) {
    const QString sentence = QStringLiteral("Open Privacy & Security in System Settings");
    QFont large = toQFont(ui::Font::body);
    large.setPixelSize(130);
    const double unhinted = QFontMetricsF{large}.horizontalAdvance(sentence) / 10;
    EXPECT_NEAR(width(sentence.toUtf8().constData(), ui::Font::body), unhinted, 0.5);
}

TEST_F(TheMetrics, LetUpgradeFitItsButton) {
    EXPECT_LE(width("Upgrade", ui::Font::body), 54);
    EXPECT_GT(width("Upgrade", ui::Font::body), width("Activate", ui::Font::body));
}

TEST_F(TheMetrics, LetTheApprovalSentenceFitTheBanner) {
    const double room = 450 - 44 - 16 - 8;
    EXPECT_LT(width("Open Privacy & Security in System Settings to allow the extensions.", ui::Font::callout),
              room + 1);
}

TEST_F(TheMetrics, GiveAnEmptyTextTheHeightOfAnyOther) {
    EXPECT_EQ(metrics_.textSize("", ui::Font::body).height, metrics_.textSize("Ag", ui::Font::body).height);
    EXPECT_EQ(width("", ui::Font::body), 0);
}

TEST_F(TheMetrics, MeasureAnAmpersandAsOneLetter) {
    EXPECT_NEAR(width("A&B", ui::Font::body),
                width("A", ui::Font::body) + width("&", ui::Font::body) + width("B", ui::Font::body), 1);
    EXPECT_GT(width("&", ui::Font::body), 5);
}

TEST_F(TheMetrics, AreFinite) {
    const ui::Size size = metrics_.textSize(std::string(100000, 'x'), ui::Font::body);
    EXPECT_TRUE(std::isfinite(size.width));
}

TEST_F(TheMetrics, GiveAnImageItsOwnSizeAndAMissingOneNone) {
    EXPECT_EQ(metrics_.imageSize({"Ethernet"}), (ui::Size{22, 22}));
    EXPECT_EQ(metrics_.imageSize({"Missing"}), (ui::Size{0, 0}));
}

} // namespace
} // namespace platform
