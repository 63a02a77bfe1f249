// The least that a program with such a window does: a window of the same size, two texts, one drawing, a look at the
// property list, and one question to the bus.

#include "benchmarks/peers/Drivers.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QPainter>
#include <QSvgRenderer>
#include <QWidget>

namespace {

QFont inter(const int size) {
    QFont font{"Inter"};
    font.setPixelSize(size);
    font.setWeight(QFont::DemiBold);
    return font;
}

class Window : public QWidget {
public:
    Window(const QString& build, const QString& icon) : build_{build}, icon_{icon} { setFixedSize(450, 230); }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter{this};
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setFont(inter(15));
        painter.drawText(QPointF{80, 100}, "Camera Driver");
        painter.setFont(inter(13));
        painter.drawText(QPointF{80, 120}, build_);
        icon_.render(&painter, QRectF{40, 90, 22, 22});
    }

private:
    QString build_;
    QSvgRenderer icon_;
};

void askForCamera() {
    auto question = QDBusMessage::createMethodCall("com.kelvra.Simulator1", "/com/kelvra/Simulator1",
                                                   "com.kelvra.Simulator1", "Submit");
    question << "1"
             << "properties"
             << "com.kelvra.ip-camera.cmio";
    QDBusConnection::sessionBus().asyncCall(question);
}

} // namespace

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    const QString contents = QString{argv[1]} + "/Contents";
    Window window{readBuild(contents), contents + "/Resources/VideoCamera.svg"};
    askForCamera();
    window.show();
    return QApplication::exec();
}
