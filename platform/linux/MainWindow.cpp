#include "platform/linux/MainWindow.h"

#include "platform/linux/Appearance.h"
#include "platform/linux/ImageStore.h"

#include <QFocusEvent>
#include <QIcon>
#include <QPixmap>
#include <QTimer>
#include <QWindow>

#include <cmath>

namespace platform {

namespace {

QIcon applicationIcon(const ImageStore& images) {
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(images.image({"AppIcon"}, {side, side}, Qt::black));
    return icon;
}

} // namespace

MainWindow::MainWindow(const QString& title, const ImageStore& images)
    : QWidget{nullptr, Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint},
      images_{images},
      canvas_{*this, images} {
    setWindowTitle(title);
    // When no control has focus, the window has it, because it has a name. Tab never moves focus to it.
    setFocus();
    create();
    windowHandle()->installEventFilter(this);
}

bool MainWindow::eventFilter(QObject* object, QEvent* event) {
    // Drawn earlier, the icon would hold up the first frame.
    if (event->type() == QEvent::Expose && windowIcon().isNull())
        QTimer::singleShot(0, this, [this] { setWindowIcon(applicationIcon(images_)); });
    // The window stays active while its menu is open; on these events, a screen reader would repeat its title.
    const auto* const focus = dynamic_cast<QFocusEvent*>(event);
    if (focus && focus->lostFocus()) inMenu_ = focus->reason() == Qt::PopupFocusReason;
    if (focus && inMenu_) return true;
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
