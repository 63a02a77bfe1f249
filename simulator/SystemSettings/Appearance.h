#pragma once

#include <QColor>
#include <QFont>

class QApplication;
class QLabel;

namespace simulator::settings {

namespace color {
inline constexpr QColor accent{0, 103, 244};
inline constexpr QColor text{29, 29, 31};
inline constexpr QColor quietText{110, 110, 115};
inline constexpr QColor ground{243, 243, 245};
inline constexpr QColor line{226, 226, 230};
inline constexpr QColor green{40, 167, 69};
inline constexpr QColor orange{224, 124, 0};
inline constexpr QColor grey{142, 142, 147};
} // namespace color

/// The typeface at a size in device-independent pixels.
QFont fontOf(int size, QFont::Weight weight = QFont::Normal);

/// A plain text that steps back behind others.
void makeQuiet(QLabel& text, int size);

/// Light colours, one style and one typeface, whatever the desktop's are; and roles for assistive technology.
void useAppearance(QApplication& application);

} // namespace simulator::settings
