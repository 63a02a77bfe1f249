#pragma once

#include "platform/ui/Scene.h"

#include <functional>
#include <string>
#include <vector>

namespace platform::fake {

/// What has to be seen of a scene, a pixel a point: worked out pixel by pixel from how far its middle is from the
/// outline of each shape, to hold the painting of a window to. Texts and images are left to tests of their own.
class PlainPicture {
public:
    /// Red, green and blue in 0 to 255, of the pixel at that place of the whole picture.
    struct Channels {
        double red = 0;
        double green = 0;
        double blue = 0;
    };
    using Seen = std::function<Channels(int x, int y)>;

    /// The scene, and what it has under the edges of its safe area. Its ground is the window's.
    explicit PlainPicture(const ui::Scene& scene);

    int width() const { return width_; }
    int height() const { return height_; }
    /// Where what is seen is something else, no more than the first few: "26,100 is 255/255/255 and not 219/219/219".
    /// On a round edge any painting has its own idea of a pixel that is covered in part, and may be a fifth of the
    /// contrast off.
    std::vector<std::string> differences(const Seen& seen) const;

    /// What has to be seen of one pixel.
    struct Pixel {
        Channels color;
        /// How far a channel may be off.
        double leeway = 0;
    };

private:
    const Pixel& at(int x, int y) const { return pixels_.at(static_cast<std::size_t>(y * width_ + x)); }

    ui::EdgeInsets safeArea_;
    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

/// The scene with the same frames and nothing written or drawn in those of texts and images.
ui::Scene withoutTextsAndImages(ui::Scene scene);

} // namespace platform::fake
