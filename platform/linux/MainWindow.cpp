#include "platform/linux/MainWindow.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"

#include <QIcon>
#include <QPixmap>

#include <cmath>

namespace platform {

namespace {

QIcon applicationIcon(const ImageStore& images) {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage image = images.image({"AppIcon"}, {side, side}, Qt::black);
        if (!image.isNull()) icon.addPixmap(QPixmap::fromImage(image));
    }
    return icon;
}

} // namespace

MainWindow::MainWindow(const QString& title, const ImageStore& images)
    : QWidget{nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint},
      canvas_{*this, images} {
    setWindowTitle(title);
    setWindowIcon(applicationIcon(images));
    canvas_.setFocus();
}

void MainWindow::present(const ui::Scene& scene) {
    if (scene.preferredColorScheme == ui::ColorScheme::light) useLightAppearance(*this);
    const QSize size{static_cast<int>(std::ceil(scene.size.width)), static_cast<int>(std::ceil(scene.size.height))};
    setFixedSize(size);
    canvas_.setGeometry(QRect{QPoint{}, size});
    canvas_.present(scene);
}

} // namespace platform
