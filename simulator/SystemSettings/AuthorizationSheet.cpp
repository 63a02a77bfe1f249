#include "simulator/SystemSettings/AuthorizationSheet.h"

#include <QKeyEvent>

namespace simulator::settings {

namespace {

bool isHeldKey(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).isAutoRepeat();
}

QString sentence(const QuestionContent& question) {
    if (question.asker.isEmpty()) return QStringLiteral("%1 is to be removed.").arg(question.name);
    return QStringLiteral("%1 wants to remove %2.").arg(question.asker, question.name);
}

} // namespace

AuthorizationSheet::AuthorizationSheet(QWidget& window, ControlClient& client) : QWidget{&window} {
    arrange();
    connect(&authorize_, &QPushButton::clicked, this, [this, &client] {
        client.act({"authorize", question_.identifier});
    });
    connect(&refuse_, &QPushButton::clicked, this, [this, &client] { client.act({"refuse", question_.identifier}); });
    hide();
}

void AuthorizationSheet::ask(const QuestionContent& question) {
    if (isVisible() && question == question_) return;
    question_ = question;
    text_.setText(sentence(question));
    identifier_.setText(question.identifier);
    authorize_.setAccessibleName("Authorize " + question.name);
    refuse_.setAccessibleName("Refuse " + question.name);
    show();
    raise();
    authorize_.setFocus();
}

bool AuthorizationSheet::eventFilter(QObject* watched, QEvent* event) {
    return event->type() == QEvent::MouseButtonDblClick || isHeldKey(*event) || QWidget::eventFilter(watched, event);
}

void AuthorizationSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape)
        QWidget::keyPressEvent(event);
    else if (!event->isAutoRepeat())
        refuse_.click();
}

void AuthorizationSheet::arrange() {
    setProperty("role", "shade");
    setAttribute(Qt::WA_StyledBackground);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored); // as large as the window, which need not grow for it
    newColumn(this, {}, 0).addWidget(&card_, 0, Qt::AlignHCenter | Qt::AlignTop);
    card_.setProperty("role", "sheet");
    card_.setAccessibleName(heading_.text());
    card_.setFixedWidth(380);
    text_.setWordWrap(true);
    text_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    auto& column = newColumn(&card_, {22, 20, 22, 18}, 8);
    column.addWidget(&heading_);
    column.addWidget(&text_);
    column.addWidget(&identifier_);
    column.addSpacing(8);
    column.addLayout(&newButtons());
}

QBoxLayout& AuthorizationSheet::newButtons() {
    auto& row = newRow(nullptr, {}, 8);
    row.addStretch();
    for (auto* button : {&refuse_, &authorize_}) {
        button->installEventFilter(this);
        row.addWidget(button);
    }
    return row;
}

} // namespace simulator::settings
