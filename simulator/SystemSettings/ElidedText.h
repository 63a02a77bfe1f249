#pragma once

#include <QLabel>

namespace simulator::settings {

/// One line of plain text that gives way to its neighbours: where not all of it fits there is an ellipsis, and all of
/// it is the tool tip. Assistive technology reads all of it.
class ElidedText : public QLabel {
public:
    ElidedText(const QFont& font, const QColor& color, Qt::TextElideMode elision = Qt::ElideRight);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color_;
    Qt::TextElideMode elision_;
};

} // namespace simulator::settings
