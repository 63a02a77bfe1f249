#pragma once

#include "platform/ui/Scene.h"

#include <QColor>
#include <QImage>
#include <QSizeF>
#include <QString>
#include <QSvgRenderer>

#include <map>
#include <memory>
#include <tuple>

namespace platform {

/// The images of the main bundle: drawings, rendered for the pixels that they are to fill. Symbols of the system come
/// from there too. A missing or unreadable image is none. Main thread only.
class ImageStore {
public:
    /// `folder` holds `<name>.svg` for each image.
    explicit ImageStore(QString folder);

    /// The image's own size in points; nothing by nothing if it is missing.
    QSizeF size(const ui::ImageReference& image) const;
    /// The image stretched to `pixels`, a symbol in `tint`; null if it is missing.
    QImage image(const ui::ImageReference& image, QSize pixels, const QColor& tint) const;

private:
    using Key = std::tuple<QString, int, int, QRgb>;

    QSvgRenderer* drawing(const ui::ImageReference& image) const;

    QString folder_;
    mutable std::map<QString, std::unique_ptr<QSvgRenderer>> drawings_;
    mutable std::map<Key, QImage> rendered_;
};

} // namespace platform
