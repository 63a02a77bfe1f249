#pragma once

#include <QWidget>

namespace simulator::settings {

/// A rounded square with a camera, or with a plug for every other extension. It says nothing that the text beside it
/// does not.
class ExtensionIcon : public QWidget {
public:
    ExtensionIcon();

    void showCamera(bool isCamera);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool isCamera_ = false;
};

} // namespace simulator::settings
