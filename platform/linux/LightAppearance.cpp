#include "platform/linux/LightAppearance.h"

#include "platform/linux/Conversions.h"

#include <QApplication>
#include <QPalette>
#include <QWidget>

namespace platform {

namespace {

constexpr QColor windowGround{236, 236, 236};

constexpr QColor disabledText{142, 142, 147};

QPalette lightPalette() {
    QPalette palette{Qt::black, windowGround, Qt::white, QColor{160, 160, 160}, QColor{200, 200, 200},
                     Qt::black, Qt::white,    Qt::white, windowGround};
    palette.setColor(QPalette::Highlight, accentColor);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabledText);
    return palette;
}

} // namespace

void chooseStyle() {
    QApplication::setStyle(QStringLiteral("Fusion"));
}

void useLightAppearance(QWidget& widget) {
    widget.setPalette(lightPalette());
    widget.setFont(toQFont(ui::Font::body));
}

} // namespace platform
