// The screen in Qt Widgets, with layouts and a style sheet.

#include "benchmarks/peers/Drivers.h"

#include <QApplication>
#include <QGridLayout>
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
    #name { font-size: 15px; font-weight: 600 }
    #state { font-weight: 600; color: #8e8e93 }
    QPushButton { background: black; color: white; border: none; border-radius: 15px; padding: 7px 18px }
    QToolButton { border: none }
)";

template <typename Widget>
Widget* make(const char* const name, const QSize size = {}) {
    auto* const widget = new Widget;
    widget->setObjectName(name);
    if (!size.isEmpty()) widget->setFixedSize(size);
    return widget;
}

QToolButton* makeMenu(Driver& driver) {
    auto* const button = new QToolButton;
    auto* const items = new QMenu{button};
    items->addAction("Refresh", &driver, [&] { driver.ask("properties"); });
    items->addAction("Remove", &driver, [&] { driver.ask("deactivation"); });
    button->setMenu(items);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setAccessibleName(driver.name + " actions");
    return button;
}

QPushButton* makeButton(Driver& driver) {
    auto* const button = new QPushButton;
    QObject::connect(button, &QPushButton::clicked, &driver, [&] { driver.ask("activation"); });
    return button;
}

QLayout* makeCard(Driver& driver) {
    auto* const icon = make<QLabel>("icon", {36, 36});
    auto* const name = make<QLabel>("name");
    auto* const state = make<QLabel>("state");
    auto* const button = makeButton(driver);
    icon->setAlignment(Qt::AlignCenter);
    name->setText(driver.name);
    const auto follow = [=, &driver] {
        icon->setPixmap(QIcon{driver.icon()}.pixmap(22, 22));
        icon->setStyleSheet(driver.enabled ? "background: black" : "");
        state->setText(driver.state);
        button->setText(driver.action());
        button->setHidden(driver.action().isEmpty());
    };
    QObject::connect(&driver, &Driver::changed, icon, follow);
    follow();
    auto* const grid = new QGridLayout;
    grid->setContentsMargins(24, 5, 24, 5);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(2);
    grid->addWidget(icon, 0, 0, 2, 1);
    grid->addWidget(name, 0, 1);
    grid->addWidget(state, 1, 1);
    grid->addWidget(button, 0, 2, 2, 1);
    grid->addWidget(makeMenu(driver), 0, 3, 2, 1);
    grid->setColumnStretch(1, 1);
    return grid;
}

QFrame* makeCards(Drivers& drivers) {
    auto* const cards = make<QFrame>("cards", {400, 134});
    auto* const column = new QVBoxLayout{cards};
    column->setContentsMargins(2, 2, 2, 2);
    column->setSpacing(4);
    column->addLayout(makeCard(drivers.camera));
    column->addWidget(make<QFrame>("line", {396, 1}));
    column->addLayout(makeCard(drivers.network));
    return cards;
}

QFrame* makeBanner(Drivers& drivers) {
    auto* const banner = make<QFrame>("banner", {450, 40});
    auto* const icon = new QLabel;
    auto* const sentence = new QLabel;
    const auto follow = [=, &drivers] {
        icon->setPixmap(QIcon{drivers.icon()}.pixmap(20, 20));
        sentence->setText(drivers.banner());
        banner->setStyleSheet("#banner { background: " + drivers.color() + " }");
    };
    QObject::connect(&drivers, &Drivers::changed, banner, follow);
    follow();
    auto* const row = new QHBoxLayout{banner};
    row->setContentsMargins(16, 0, 16, 0);
    row->addWidget(icon);
    row->addWidget(sentence, 1);
    return banner;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application{argc, argv};
    const QString contents = QString{argv[1]} + "/Contents";
    Drivers drivers{contents};
    QWidget window;
    window.setObjectName("window");
    window.setFixedSize(450, 230);
    auto* const column = new QVBoxLayout{&window};
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(makeBanner(drivers));
    column->addWidget(makeCards(drivers), 1, Qt::AlignCenter);
    window.setStyleSheet(look);
    window.setWindowTitle("Driver Manager");
    window.setWindowIcon(QIcon{contents + "/Resources/AppIcon.svg"});
    window.show();
    return QApplication::exec();
}
