#include "platform/linux/Appearance.h"

#include "platform/ui/Painting.h"

#include <QApplication>
#include <QPalette>
#include <QProxyStyle>
#include <QWidget>

#include <algorithm>

namespace platform {

namespace {

QPalette lightPalette() {
    const QColor ground = toQColor(ui::windowGround);
    QPalette palette{Qt::black, ground,    Qt::white, QColor{160, 160, 160}, QColor{200, 200, 200}, Qt::black,
                     Qt::white, Qt::white, ground};
    palette.setColor(QPalette::Highlight, accentColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, toQColor(ui::Color::gray));
    return palette;
}

/// Typing selects the menu item that starts with the typed letters.
class Style : public QProxyStyle {
public:
    Style() : QProxyStyle{QStringLiteral("Fusion")} {}
    int styleHint(const StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_Menu_KeyboardSearch ? 1 : QProxyStyle::styleHint(hint, option, widget, result);
    }
};

} // namespace

QColor toQColor(const ui::Color& color) {
    const auto component = [](const double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue),
                            component(color.opacity));
}

QFont toQFont(const ui::Font font) {
    QFont result{QStringLiteral("Inter")};
    result.setPixelSize(static_cast<int>(ui::pointSize(font.style)));
    result.setWeight(font.weight == ui::FontWeight::semibold ? QFont::DemiBold : QFont::Normal);
    result.setHintingPreference(QFont::PreferVerticalHinting);
    result.setStyleStrategy(static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    return result;
}

QRectF toQRectF(const ui::Rect& rect) {
    return {rect.x, rect.y, rect.width, rect.height};
}

void chooseStyle() {
    QApplication::setStyle(new Style);
}

void useLightAppearance(QWidget& widget) {
    widget.setPalette(lightPalette());
    widget.setFont(toQFont(ui::Font::body));
}

} // namespace platform
