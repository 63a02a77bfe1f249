#include "platform/linux/ScenePainter.h"

#include "platform/linux/Appearance.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <QFontInfo>
#include <QFontMetricsF>

namespace platform {
namespace {

using ui::Color;
using ui::ShapeKind;

class APainting : public testing::Test {
protected:
    /// `width` by `height` points of white with `nodes` on them.
    QImage paint(const std::vector<ui::SceneNode>& nodes, const double scale = 1, const int width = 60,
                 const int height = 40) const {
        QImage image{static_cast<int>(width * scale), static_cast<int>(height * scale), QImage::Format_RGB32};
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        QPainter painter{&image};
        ScenePainter{painter, images_}.paint(nodes);
        painter.end();
        return image;
    }
    static ui::SceneNode fill(const ui::Rect& rect, const ShapeKind shape = ShapeKind::rectangle) {
        return {ui::Fill{rect, shape, Color::black}};
    }
    static ui::TextRun run(const std::string& text, const ui::Font font = ui::Font::body) {
        return {{10, 10, 100, 16}, text, font, Color::black};
    }
    /// The smallest rectangle that contains all pixels that are not white.
    static QRect inked(const QImage& image) {
        QRect bounds;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixelColor(x, y) != QColor(Qt::white)) bounds |= QRect{x, y, 1, 1};
        return bounds;
    }
    static bool isBlackOrWhite(const QImage& image) {
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor color = image.pixelColor(x, y);
                if (color != QColor(Qt::white) && color != QColor(Qt::black)) return false;
            }
        }
        return true;
    }

    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
};

TEST_F(APainting, DrawsABorderOfWholePixels) {
    for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
        const QImage image = paint({{ui::Stroke{{11, 11, 38, 18}, ShapeKind::rectangle, Color::black, 2}}}, scale);
        EXPECT_TRUE(isBlackOrWhite(image)) << scale;
        const auto pixels = [&](const int points) { return static_cast<int>(points * scale); };
        EXPECT_EQ(inked(image), QRect(pixels(10), pixels(10), pixels(40), pixels(20))) << scale;
        EXPECT_EQ(image.pixelColor(pixels(12) - 1, pixels(20)), QColor(Qt::black)) << scale;
        EXPECT_EQ(image.pixelColor(pixels(12), pixels(20)), QColor(Qt::white)) << scale;
    }
}

TEST_F(APainting, ClampsColorComponents) {
    const Color beyond{257, -1, 0.5, 2};
    const QImage image = paint({{ui::Fill{{10, 10, 10, 10}, ShapeKind::rectangle, beyond}}});
    EXPECT_EQ(image.pixelColor(15, 15), QColor(255, 0, 128));
}

TEST_F(APainting, PutsAnImageOnWholePixels) {
    const QImage exact = paint({{ui::ImageRun{{10, 10, 22, 22}, {"Ethernet"}, Color::black, ""}}});
    EXPECT_EQ(paint({{ui::ImageRun{{10.2, 9.75, 22, 22}, {"Ethernet"}, Color::black, ""}}}), exact);
}

class AText : public APainting {
protected:
    const QtMetrics metrics_{images_};
};

TEST_F(AText, IsPaintedAsWideAsMeasured) {
    for (const char* text : {"Activate", "Upgrade", "Network Driver", "Open Privacy & Security in System Settings"}) {
        for (const ui::Font font :
             {ui::Font::body, ui::Font::callout, ui::Font{ui::TextStyle::title3, ui::FontWeight::semibold}}) {
            for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
                const double measured = metrics_.textSize(text, font).width;
                const double painted = inked(paint({{run(text, font)}}, scale, 400)).width() / scale;
                EXPECT_NEAR(painted, measured, 2.5) << text << " at " << scale;
            }
        }
    }
}

TEST_F(AText, HasItsCapitalsInTheMiddleOfItsLine) {
    for (const ui::TextStyle style : {ui::TextStyle::body, ui::TextStyle::callout, ui::TextStyle::title3}) {
        ui::TextRun letter = run("H", {style, ui::FontWeight::regular});
        letter.rect.height = metrics_.textSize("H", letter.font).height;
        const QRect ink = inked(paint({{letter}}, 3));
        EXPECT_NEAR((ink.top() + ink.bottom() + 1) / 2.0 / 3, letter.rect.y + letter.rect.height / 2, 0.5);
    }
}

TEST_F(AText, IsNeverReadAsMarkupOrAMnemonic) {
    const QFontMetricsF inter{toQFont(ui::Font::body)};
    for (const char* text : {"<b>bold</b>", "A &amp; B", "&File", "&&"}) {
        const double whole = inter.horizontalAdvance(QString::fromUtf8(text));
        EXPECT_NEAR(inked(paint({{run(text)}}, 1, 200)).width(), whole, 3) << text;
    }
}

TEST_F(AText, IsDrawnInItsColor) {
    ui::TextRun red = run("H");
    red.color = {1, 0, 0, 1};
    const QImage image = paint({{red}}, 3);
    const QRect ink = inked(image);
    EXPECT_EQ(image.pixelColor(ink.left() + 2, ink.center().y()), QColor(Qt::red));
}

TEST_F(AText, EndsInAnEllipsisIfItIsTruncated) {
    ui::TextRun truncated = run("A name that is far too long for this");
    truncated.rect.width = 90;
    truncated.truncated = true;
    const QImage shown = paint({{truncated}}, 1, 300);
    EXPECT_LE(inked(shown).right(), 100);

    ui::TextRun ended = run("");
    ended.text = QFontMetricsF{toQFont(truncated.font)}
                     .elidedText(QString::fromStdString(truncated.text), Qt::ElideRight, 90)
                     .toStdString();
    EXPECT_EQ(QString::fromStdString(ended.text).back(), QChar(0x2026));
    EXPECT_EQ(shown, paint({{ended}}, 1, 300));
}

TEST_F(AText, IsWholeIfItLacksLessThanAPoint) {
    ui::TextRun tight = run("Upgrade");
    tight.rect.width = metrics_.textSize("Upgrade", tight.font).width - 0.9;
    EXPECT_EQ(paint({{tight}}, 1, 200), paint({{run("Upgrade")}}, 1, 200));
}

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

TEST_F(TheMetrics, DoNotDependOnTheResolutionOfTheDesktop) {
    EXPECT_EQ(toQFont(ui::Font::title3).pixelSize(), 15);
    EXPECT_EQ(toQFont(ui::Font::body).pixelSize(), 13);
    EXPECT_EQ(toQFont(ui::Font::callout).pixelSize(), 12);
}

TEST_F(TheMetrics, GrowWithTheTextInFractionsOfAPixel) {
    const QString sentence = QStringLiteral("Open Privacy & Security in System Settings");
    QFont large = toQFont(ui::Font::body);
    large.setPixelSize(130);
    const double unhinted = QFontMetricsF{large}.horizontalAdvance(sentence) / 10;
    EXPECT_NEAR(width(sentence.toUtf8().constData(), ui::Font::body), unhinted, 0.5);
}

TEST_F(TheMetrics, MakeAButtonThirtyPointsHigh) {
    EXPECT_NEAR(metrics_.textSize("Activate", ui::Font::body).height, 16, 0.5);
}

TEST_F(TheMetrics, GiveAnEmptyTextTheHeightOfALine) {
    EXPECT_EQ(metrics_.textSize("", ui::Font::body).height, metrics_.textSize("Ag", ui::Font::body).height);
    EXPECT_EQ(width("", ui::Font::body), 0);
}

TEST_F(TheMetrics, GiveTheSizeOfAnImageAndZeroForAMissingOne) {
    EXPECT_EQ(metrics_.imageSize({"Ethernet"}), (ui::Size{22, 22}));
    EXPECT_EQ(metrics_.imageSize({"Missing"}), (ui::Size{0, 0}));
}

} // namespace
} // namespace platform
