#include "platform/linux/ImageStore.h"

#include "platform/linux/ScenePainter.h"
#include "tests/platform/linux/window/WindowTest.h"

#include <QPainter>

namespace platform {
namespace {

using Source = ui::ImageReference::Source;

constexpr const char* assets[] = {"Ethernet", "EthernetDark", "VideoCamera", "VideoCameraDark"};
constexpr const char* symbols[] = {"checkmark.circle.fill", "exclamationmark.circle.fill", "arrow.clockwise.circle",
                                   "trash"};
constexpr double scales[] = {1, 1.5, 2, 3};

class TheImages : public testing::Test {
protected:
    /// What a scene painter paints of the image over 22 by 22 points at `scale` pixels a point.
    QImage painted(const ui::ImageReference& image, const double scale) const {
        const int side = static_cast<int>(22 * scale);
        QImage canvas{side, side, QImage::Format_ARGB32_Premultiplied};
        canvas.setDevicePixelRatio(scale);
        canvas.fill(Qt::transparent);
        QPainter painter{&canvas};
        ScenePainter{painter, images_}.paint({{ui::ImageRun{{0, 0, 22, 22}, image, ui::Color::black, ""}}});
        painter.end();
        return canvas;
    }
    /// The drawing itself, rendered at that many pixels.
    static QImage drawn(const char* name, const int side) {
        QSvgRenderer drawing{QStringLiteral(ICONS "/") + QLatin1String{name} + QLatin1String{".svg"}};
        QImage image{side, side, QImage::Format_ARGB32_Premultiplied};
        image.fill(Qt::transparent);
        QPainter painter{&image};
        drawing.render(&painter, QRectF{image.rect()});
        return image;
    }
    static std::vector<int> alphaOfColumn(const QImage& image, const int x) {
        std::vector<int> alpha;
        for (int y = 0; y < image.height(); ++y)
            alpha.push_back(image.pixelColor(x, y).alpha());
        return alpha;
    }

    TestApplication application_;
    ImageStore images_{QStringLiteral(ICONS)};
};

TEST_F(TheImages, HaveTheirNaturalSize) {
    for (const char* name : assets)
        EXPECT_EQ(images_.size({name}), QSizeF(22, 22)) << name;
    for (const char* name : symbols)
        EXPECT_EQ(images_.size({name, Source::system}), QSizeF(20, 20)) << name;
}

TEST_F(TheImages, AreRenderedAtTheirSizeInPixels) {
    for (const char* name : assets) {
        for (const double scale : scales) {
            const QImage expected = drawn(name, static_cast<int>(22 * scale));
            QImage shown = painted({name}, scale);
            shown.setDevicePixelRatio(1);
            EXPECT_EQ(shown, expected) << name << " at " << scale;
        }
    }
}

TEST_F(TheImages, HaveStraightEdgesOnWholePixels) {
    // The top edges of the jack, between two contacts, and of the camera are 4 points from the top.
    for (const double scale : scales) {
        for (const char* name : assets) {
            const auto column = alphaOfColumn(painted({name}, scale), static_cast<int>(9.5 * scale));
            const auto edge = static_cast<std::size_t>(4 * scale);
            EXPECT_EQ(column[edge - 1], 0) << name << " at " << scale;
            EXPECT_EQ(column[edge], 255) << name << " at " << scale;
        }
    }
}

TEST_F(TheImages, AreDarkOnLightAndLightOnTheDarkDisc) {
    for (const char* name : {"Ethernet", "VideoCamera"}) {
        EXPECT_EQ(painted({name}, 2).pixelColor(19, 9), QColor(Qt::black)) << name;
        EXPECT_EQ(painted({std::string{name} + "Dark"}, 2).pixelColor(19, 9), QColor(Qt::white)) << name;
    }
}

TEST_F(TheImages, LookTheSameInBothVariants) {
    for (const char* name : {"Ethernet", "VideoCamera"}) {
        const QImage light = painted({name}, 2).convertToFormat(QImage::Format_Alpha8);
        EXPECT_EQ(light, painted({std::string{name} + "Dark"}, 2).convertToFormat(QImage::Format_Alpha8)) << name;
    }
}

TEST_F(TheImages, HaveTheColorOfTheSceneIfTheyAreSymbols) {
    for (const char* name : symbols) {
        const QImage red = images_.image({name, Source::system}, {40, 40}, Qt::red).toImage();
        const QImage black = images_.image({name, Source::system}, {40, 40}, Qt::black).toImage();
        EXPECT_EQ(red.convertToFormat(QImage::Format_Alpha8), black.convertToFormat(QImage::Format_Alpha8)) << name;
        int opaque = 0;
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 40; ++x)
                if (red.pixelColor(x, y).alpha() == 255) {
                    ++opaque;
                    EXPECT_EQ(red.pixelColor(x, y), QColor(Qt::red)) << name;
                }
        EXPECT_GT(opaque, 100) << name;
    }
}

TEST_F(TheImages, AreEmptyIfTheyAreMissing) {
    EXPECT_EQ(images_.size({"Missing"}), QSizeF(0, 0));
    EXPECT_TRUE(images_.image({"Missing"}, {22, 22}, Qt::black).isNull());
    QImage nothing = painted({"Missing"}, 1);
    EXPECT_EQ(alphaOfColumn(nothing, 11), std::vector<int>(22, 0));
}

TEST_F(TheImages, StayCorrectBeyondTheSizeOfTheCache) {
    const QImage first = images_.image({"Ethernet"}, {22, 22}, Qt::black).toImage();
    for (int side = 1; side <= 100; ++side)
        images_.image({"Ethernet"}, {side, side}, Qt::black);
    EXPECT_EQ(images_.image({"Ethernet"}, {22, 22}, Qt::black).toImage(), first);
}

} // namespace
} // namespace platform
