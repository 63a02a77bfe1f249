#include "simulator/sysextctl/OneLine.h"

namespace simulator::ctl {

namespace {

bool breaksLine(QChar character) {
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator ||
           character == QChar::ParagraphSeparator;
}

} // namespace

QString oneLine(QString text) {
    for (auto& character : text)
        if (breaksLine(character)) character = u' ';
    return text;
}

} // namespace simulator::ctl
