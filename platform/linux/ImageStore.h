#pragma once

#include "platform/ui/Scene.h"

#include <QColor>
#include <QPixmap>
#include <QSizeF>
#include <QString>
#include <QSvgRenderer>

#include <map>
#include <memory>
#include <tuple>

namespace platform {

/// The SVG images of the main bundle, system symbols included, rendered in pixels. Main thread only.
class ImageStore {
public:
    /// `folder` holds `<name>.svg` for each image.
    explicit ImageStore(QString folder);

    /// The image's own size in points; 0 by 0 if the image is missing or unreadable.
    QSizeF size(const ui::ImageReference& image) const;
    /// The image stretched to `pixels`, of which `scale` make a point, a symbol in `tint`; null if the image is missing
    /// or unreadable. Asked again, it is the same to Qt, which remembers what it makes of an icon.
    QPixmap image(const ui::ImageReference& image, QSize pixels, const QColor& tint, double scale = 1) const;

private:
    using Key = std::tuple<QString, int, int, QRgb, double>;

    QSvgRenderer* drawing(const ui::ImageReference& image) const;

    QString folder_;
    /// By name; null for an image that is missing or unreadable.
    mutable std::map<QString, std::unique_ptr<QSvgRenderer>> drawings_;
    mutable std::map<Key, QPixmap> rendered_;
};

} // namespace platform
