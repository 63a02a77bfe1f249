#include "platform/linux/ImageStore.h"

#include <QFileInfo>
#include <QPainter>

namespace platform {

namespace {

/// The window shows only a few images; beyond this number, most are of sizes no longer in use.
constexpr std::size_t mostRendered = 64;

bool isSymbol(const ui::ImageReference& image) {
    return image.source == ui::ImageReference::Source::system;
}

std::unique_ptr<QSvgRenderer> read(const QString& file) {
    if (!QFileInfo{file}.isFile()) return nullptr;
    auto drawing = std::make_unique<QSvgRenderer>(file);
    return drawing->isValid() ? std::move(drawing) : nullptr;
}

QPixmap render(QSvgRenderer& drawing, const QSize pixels) {
    QPixmap image{pixels};
    image.fill(Qt::transparent);
    QPainter painter{&image};
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter, QRectF{QPointF{}, QSizeF{pixels}});
    return image;
}

void fillMask(QPixmap& mask, const QColor& tint) {
    QPainter painter{&mask};
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(mask.rect(), tint);
}

} // namespace

ImageStore::ImageStore(QString folder) : folder_{std::move(folder)} {
}

QSvgRenderer* ImageStore::drawing(const ui::ImageReference& image) const {
    const QString name = QString::fromStdString(image.name);
    const auto known = drawings_.find(name);
    if (known != drawings_.end()) return known->second.get();
    return drawings_.emplace(name, read(folder_ + QLatin1Char{'/'} + name + QLatin1String{".svg"})).first->second.get();
}

QSizeF ImageStore::size(const ui::ImageReference& image) const {
    const QSvgRenderer* found = drawing(image);
    return found ? QSizeF{found->defaultSize()} : QSizeF{0, 0};
}

QPixmap ImageStore::image(const ui::ImageReference& image, const QSize pixels, const QColor& tint,
                          const double scale) const {
    QSvgRenderer* found = pixels.isEmpty() ? nullptr : drawing(image);
    if (!found) return {};
    const Key key{QString::fromStdString(image.name), pixels.width(), pixels.height(),
                  isSymbol(image) ? tint.rgba() : QRgb{}, scale};
    if (const auto known = rendered_.find(key); known != rendered_.end()) return known->second;
    if (rendered_.size() >= mostRendered) rendered_.clear();
    QPixmap result = render(*found, pixels);
    if (isSymbol(image)) fillMask(result, tint);
    result.setDevicePixelRatio(scale);
    return rendered_.emplace(key, std::move(result)).first->second;
}

} // namespace platform
