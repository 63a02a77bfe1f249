// The least that a program with such a window does: a window of the same size, two texts, one drawing, a look at the
// property list, and one question to the bus.

#include "benchmarks/peers/Drivers.h"

#include <QApplication>
#include <QPainter>
#include <QSvgRenderer>
#include <QWidget>

namespace {

class Window : public QWidget {
public:
    explicit Window(const QString& contents)
        : build_{readBuild(contents)}, icon_{contents + "/Resources/VideoCamera.svg"} {
        setFixedSize(450, 230);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter{this};
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, 15, {80, 100}, "Camera Driver");
        draw(painter, 13, {80, 120}, build_);
        icon_.render(&painter, {40, 90, 22, 22});
    }

private:
    static void draw(QPainter& painter, const int size, const QPointF& place, const QString& text) {
        QFont font{"Inter"};
        font.setPixelSize(size);
        font.setWeight(QFont::DemiBold);
        painter.setFont(font);
        painter.drawText(place, text);
    }

    QString build_;
    QSvgRenderer icon_;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    Window window{QString{argv[1]} + "/Contents"};
    ask("properties", "com.kelvra.ip-camera.cmio");
    window.show();
    return QApplication::exec();
}
