#pragma once

#include "platform/macos/Native.h"
#include "platform/ui/Scene.h"

#include <memory>
#include <string>

namespace platform {

/// The images of the main bundle and the symbols of the system, by name. A symbol that the system lacks is the image of
/// its name in the bundle. A missing or unreadable image is none. Main thread only.
class ImageStore {
public:
    /// `folder` holds the images, `<name>.pdf` or `<name>.png`.
    explicit ImageStore(std::string folder);
    ImageStore(const ImageStore&) = delete;
    ImageStore& operator=(const ImageStore&) = delete;
    ~ImageStore();

    /// The image's own size in points; nothing by nothing if it is missing.
    ui::Size size(const ui::ImageReference& image) const;
    /// An NSImage, nil if it is missing. It lives as long as this does.
    Native image(const ui::ImageReference& image) const;
    /// Draws the image over all of `rect` in the current graphics context, which is flipped; a symbol in `color`.
    void draw(const ui::ImageReference& image, const ui::Rect& rect, const ui::Color& color) const;

private:
    struct Loaded;

    std::string folder_;
    std::unique_ptr<Loaded> loaded_;
};

} // namespace platform
