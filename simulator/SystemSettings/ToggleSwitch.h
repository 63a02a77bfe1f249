#pragma once

#include <QCheckBox>

namespace simulator::settings {

/// A switch that shows what is, not what was pressed: a press only emits clicked(), and whoever hears it calls
/// setChecked() when it has come about.
class ToggleSwitch : public QCheckBox {
public:
    ToggleSwitch();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool hitButton(const QPoint& position) const override;
    void nextCheckState() override {}
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace simulator::settings
