#include "platform/Text.h"

#include <QChar>
#include <QString>
#include <QTextBoundaryFinder>

namespace platform {

bool isAlphanumeric(const char32_t scalar) {
    return QChar::isLetterOrNumber(scalar) || QChar::isMark(scalar);
}

std::size_t characterCount(const std::string_view text) {
    const auto characters = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    QTextBoundaryFinder finder{QTextBoundaryFinder::Grapheme, characters};
    std::size_t count = 0;
    while (finder.toNextBoundary() != -1)
        ++count;
    return count;
}

} // namespace platform
