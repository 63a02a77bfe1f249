#pragma once

#include <QString>

#include <ostream>

/// How GoogleTest shows a text of Qt.
inline void PrintTo(const QString& text, std::ostream* stream) {
    *stream << '"' << text.toStdString() << '"';
}
