#include "simulator/SystemSettings/Appearance.h"

#include "simulator/SystemSettings/Roles.h"

#include <QApplication>
#include <QLabel>
#include <QPalette>

namespace simulator::settings {

namespace {

QPalette lightPalette() {
    QPalette palette{color::text, color::ground, Qt::white, QColor{160, 160, 160}, QColor{200, 200, 200},
                     color::text, Qt::white,     Qt::white, color::ground};
    palette.setColor(QPalette::Highlight, color::accent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, color::grey);
    return palette;
}

constexpr auto styleSheet = R"(
QPushButton {
    padding: 4px 14px; min-height: 18px; border-radius: 7px;
    border: 1px solid #d4d4d8; background: #ffffff; color: #1d1d1f; outline: none;
}
QPushButton:hover { background: #f7f7f9; }
QPushButton:pressed { background: #e9e9ee; }
QPushButton:disabled { color: #aeaeb2; background: #fafafa; border-color: #e4e4e8; }
QPushButton[leading="true"] { background: #0067f4; border-color: #0067f4; color: #ffffff; }
QPushButton[leading="true"]:hover { background: #0a72ff; }
QPushButton[leading="true"]:pressed { background: #0054c8; }
QPushButton[leading="true"]:disabled { background: #b9d3fa; border-color: #b9d3fa; }
QPushButton:focus { border: 2px solid #0067f4; padding: 3px 13px; }
QPushButton[leading="true"]:focus { border: 2px solid #00204f; }
QFrame[role="card"] { background: #ffffff; border: 1px solid #e2e2e6; border-radius: 10px; }
QFrame[role="line"] { background: #ececef; border: none; }
QFrame[role="notice"] { background: #fff6e0; border: 1px solid #f2ddb0; border-radius: 10px; }
QFrame[role="footer"] { background: transparent; border: none; border-top: 1px solid #e2e2e6; }
QFrame[role="sheet"] {
    background: #ffffff; border: 1px solid #c9c9ce; border-top: none;
    border-bottom-left-radius: 10px; border-bottom-right-radius: 10px;
}
QScrollBar:vertical { background: transparent; width: 10px; margin: 2px; }
QScrollBar::handle:vertical { background: #c4c4c9; border-radius: 3px; min-height: 24px; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QScrollArea, QScrollArea > QWidget > QWidget[role="page"] { background: transparent; border: none; }
)";

} // namespace

QFont fontOf(int size, QFont::Weight weight) {
    QFont font{QStringLiteral("Inter")};
    font.setPixelSize(size);
    font.setWeight(weight);
    return font;
}

void makeQuiet(QLabel& text, int size) {
    text.setTextFormat(Qt::PlainText);
    text.setFont(fontOf(size));
    auto colors = text.palette();
    colors.setColor(QPalette::WindowText, color::quietText);
    text.setPalette(colors);
}

void useAppearance(QApplication& application) {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(lightPalette());
    QApplication::setFont(fontOf(13));
    application.setStyleSheet(styleSheet);
    useRoles();
}

} // namespace simulator::settings
