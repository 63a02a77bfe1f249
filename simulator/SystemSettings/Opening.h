#pragma once

#include <QWidget>

namespace simulator::settings {

/// Shows a window so that there is room for an application's beside it, and prints a line when it is on the screen:
/// whoever started the program can then open the application without a race for the place.
class Opening : public QObject {
public:
    /// The window outlives this.
    explicit Opening(QWidget& window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace simulator::settings
