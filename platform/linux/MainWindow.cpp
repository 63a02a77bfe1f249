#include "platform/linux/MainWindow.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"

#include <QFocusEvent>
#include <QIcon>
#include <QPixmap>
#include <QWindow>

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
    // When no control has focus, the window has it, because it has a name. Tab never moves focus to it.
    setFocus();
    create();
    windowHandle()->installEventFilter(this);
}

bool MainWindow::focusNextPrevChild(const bool next) {
    return canvas_.focusNextPrevChild(next);
}

bool MainWindow::eventFilter(QObject* object, QEvent* event) {
    // The window stays active while its menu is open; on these events, a screen reader would repeat its title.
    const auto* const focus = dynamic_cast<QFocusEvent*>(event);
    if (focus && focus->lostFocus()) isBelowMenu_ = focus->reason() == Qt::PopupFocusReason;
    if (focus && isBelowMenu_) return true;
    return QWidget::eventFilter(object, event);
}

void MainWindow::present(const ui::Scene& scene) {
    if (scene.preferredColorScheme == ui::ColorScheme::light) useLightAppearance(*this);
    const QSize size{static_cast<int>(std::ceil(scene.size.width)), static_cast<int>(std::ceil(scene.size.height))};
    setFixedSize(size);
    canvas_.setGeometry(QRect{QPoint{}, size});
    canvas_.present(scene);
}

} // namespace platform
