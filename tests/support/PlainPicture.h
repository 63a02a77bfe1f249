#pragma once

#include "platform/ui/Scene.h"

#include <functional>
#include <string>
#include <vector>

namespace platform::fake {

/// The expected picture of a scene, one pixel for each point, computed from the distance of each pixel's center to the
/// outline of each shape. It does not contain texts and images, which have their own tests.
class PlainPicture {
public:
    /// Red, green, and blue from 0 to 255 of the pixel at this position of the whole picture.
    struct Channels {
        double red = 0;
        double green = 0;
        double blue = 0;
    };
    using Seen = std::function<Channels(int x, int y)>;

    /// The scene, and what it has under the edges of its safe area. Its ground is the window's.
    explicit PlainPicture(const ui::Scene& scene);

    /// The first few differences: "26,100 is 255/255/255 and not 219/219/219".
    /// On a round edge, painters differ in how they paint a pixel that is partly covered, so a fifth of the
    /// contrast is tolerated.
    std::vector<std::string> differences(const Seen& seen) const;

    /// The expected color of one pixel.
    struct Pixel {
        Channels color;
        /// The tolerance of a channel.
        double leeway = 0;
    };

private:
    const Pixel& at(int x, int y) const { return pixels_.at(static_cast<std::size_t>(std::ptrdiff_t{y} * width_ + x)); }

    ui::EdgeInsets safeArea_;
    int width_;
    int height_;
    std::vector<Pixel> pixels_;
};

/// The scene with the same frames, but with empty texts and images.
ui::Scene withoutTextsAndImages(ui::Scene scene);

} // namespace platform::fake
