#include "simulator/SystemSettings/AuthorizationSheet.h"

#include "simulator/SystemSettings/Appearance.h"

#include <QKeyEvent>
#include <QPainter>

namespace simulator::settings {

namespace {

constexpr QColor shade{0, 0, 0, 56};

bool isHeldKey(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).isAutoRepeat();
}

QString sentence(const QuestionContent& question) {
    if (question.asker.isEmpty()) return QStringLiteral("%1 is to be removed.").arg(question.name);
    return QStringLiteral("%1 wants to remove %2.").arg(question.asker, question.name);
}

} // namespace

AuthorizationSheet::AuthorizationSheet(QWidget& window)
    : QWidget{&window},
      heading_{"An administrator has to agree"},
      identifier_{fontOf(13), color::quietText, Qt::ElideMiddle},
      refuse_{"Refuse"},
      authorize_{"Authorize"} {
    arrange();
    connect(&authorize_, &QPushButton::clicked, this, [this] { emit authorized(question_.identifier); });
    connect(&refuse_, &QPushButton::clicked, this, [this] { emit refused(question_.identifier); });
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

void AuthorizationSheet::paintEvent(QPaintEvent*) {
    QPainter{this}.fillRect(rect(), shade);
}

void AuthorizationSheet::arrange() {
    setLayout(&layout_);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.addWidget(&card_, 0, Qt::AlignHCenter | Qt::AlignTop);
    card_.setProperty("role", "sheet");
    card_.setAccessibleName(heading_.text());
    card_.setFixedWidth(380);
    arrangeCard();
}

void AuthorizationSheet::arrangeCard() {
    card_.setLayout(&cardLayout_);
    cardLayout_.setContentsMargins(22, 20, 22, 18);
    cardLayout_.setSpacing(8);
    cardLayout_.addWidget(&heading_);
    cardLayout_.addWidget(&text_);
    cardLayout_.addWidget(&identifier_);
    cardLayout_.addSpacing(8);
    cardLayout_.addLayout(&buttons_);
    heading_.setTextFormat(Qt::PlainText);
    heading_.setFont(fontOf(14, QFont::DemiBold));
    makeQuiet(text_, 13);
    text_.setWordWrap(true);
    text_.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Minimum);
    buttons_.addStretch();
    authorize_.setProperty("leading", true);
    for (auto* button : {&refuse_, &authorize_}) {
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(true);
        button->installEventFilter(this);
        buttons_.addWidget(button);
    }
}

} // namespace simulator::settings
