#pragma once

#include <QLabel>

namespace simulator::settings {

/// One line of plain text that gives way to its neighbours: what does not fit ends in an ellipsis, and is the tool tip.
/// Assistive technology reads all of it.
class ElidedText : public QLabel {
public:
    explicit ElidedText(const QFont& font, const QColor& color);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor color_;
};

} // namespace simulator::settings
