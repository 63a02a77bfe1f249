// The screen in Qt Widgets, with layouts and a style sheet.

#include "benchmarks/peers/Drivers.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFrame>
#include <QIcon>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

namespace {

const char* const look = R"(
    QWidget { font-family: Inter; font-size: 13px; color: black }
    #window { background: #ececec }
    #banner QLabel { font-size: 12px }
    #cards { background: white; border: 2px solid #dbdbdb }
    #line { background: #e5e5e5 }
    #icon { border: 2px solid black; border-radius: 18px }
    #icon[dark="true"] { background: black }
    #name { font-size: 15px; font-weight: 600 }
    #state { font-weight: 600; color: #8e8e93 }
    QPushButton { background: black; color: white; border: none; border-radius: 15px; padding: 7px 18px }
    QToolButton { border: none }
)";

class Card : public QFrame {
public:
    explicit Card(Driver& driver) : driver_{driver}, name_{driver.name} {
        auto* const texts = new QVBoxLayout;
        texts->setSpacing(2);
        texts->addWidget(&name_);
        texts->addWidget(&state_);
        auto* const row = new QHBoxLayout{this};
        row->setContentsMargins(24, 5, 24, 5);
        row->setSpacing(16);
        row->addWidget(&icon_);
        row->addLayout(texts);
        row->addStretch();
        row->addWidget(&button_);
        row->addWidget(&menu_);
        icon_.setObjectName("icon");
        icon_.setFixedSize(36, 36);
        icon_.setAlignment(Qt::AlignCenter);
        name_.setObjectName("name");
        state_.setObjectName("state");
        makeMenu();
        connect(&button_, &QPushButton::clicked, this, [this] { driver_.ask("activation"); });
        connect(&driver, &Driver::changed, this, &Card::follow);
        follow();
    }

private:
    void makeMenu() {
        auto* const items = new QMenu{&menu_};
        items->addAction("Refresh", this, [this] { driver_.ask(); });
        items->addAction("Remove", this, [this] { driver_.ask("deactivation"); });
        menu_.setMenu(items);
        menu_.setPopupMode(QToolButton::InstantPopup);
        menu_.setAccessibleName(driver_.name + " actions");
    }

    void follow() {
        const QString file = driver_.icon + (driver_.enabled ? "Dark.svg" : ".svg");
        icon_.setPixmap(QIcon{file}.pixmap(22, 22));
        icon_.setProperty("dark", driver_.enabled);
        icon_.setStyleSheet(look);
        state_.setText(driver_.state);
        button_.setText(driver_.action());
        button_.setVisible(!driver_.action().isEmpty());
    }

    Driver& driver_;
    QLabel icon_, name_, state_;
    QPushButton button_;
    QToolButton menu_;
};

class Window : public QWidget {
public:
    explicit Window(Drivers& drivers) : drivers_{drivers}, camera_{drivers.camera}, network_{drivers.network} {
        setObjectName("window");
        setFixedSize(450, 230);
        auto* const column = new QVBoxLayout{this};
        column->setContentsMargins(0, 0, 0, 0);
        column->addWidget(&banner_);
        column->addWidget(makeCards(), 1, Qt::AlignCenter);
        banner_.setObjectName("banner");
        banner_.setFixedHeight(40);
        auto* const row = new QHBoxLayout{&banner_};
        row->setContentsMargins(16, 0, 16, 0);
        row->addWidget(&sign_);
        row->addWidget(&sentence_, 1);
        setStyleSheet(look);
        connect(&drivers, &Drivers::changed, this, &Window::follow);
        follow();
    }

private:
    QWidget* makeCards() {
        auto* const cards = new QFrame;
        cards->setObjectName("cards");
        cards->setFixedSize(400, 134);
        auto* const line = new QFrame;
        line->setObjectName("line");
        line->setFixedHeight(1);
        auto* const column = new QVBoxLayout{cards};
        column->setContentsMargins(2, 2, 2, 2);
        column->setSpacing(4);
        column->addWidget(&camera_);
        column->addWidget(line);
        column->addWidget(&network_);
        return cards;
    }

    void follow() {
        const QString folder = drivers_.camera.icon.section('/', 0, -2);
        const QString name = drivers_.ready() ? "checkmark" : "exclamationmark";
        sign_.setPixmap(QIcon{folder + "/" + name + ".circle.fill.svg"}.pixmap(20, 20));
        sentence_.setText(drivers_.banner());
        banner_.setStyleSheet("#banner { background: " + drivers_.color() + " }");
    }

    Drivers& drivers_;
    QFrame banner_;
    QLabel sign_, sentence_;
    Card camera_, network_;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    Drivers drivers{QString{argv[1]} + "/Contents"};
    Window window{drivers};
    window.setWindowTitle("Driver Manager");
    window.setWindowIcon(QIcon{QString{argv[1]} + "/Contents/Resources/AppIcon.svg"});
    window.show();
    return QApplication::exec();
}
