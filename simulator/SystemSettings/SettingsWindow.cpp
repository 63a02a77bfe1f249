#include "simulator/SystemSettings/SettingsWindow.h"

#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <iterator>

namespace simulator::settings {

namespace {

/// Room for a row of every kind and the scroll bar; narrow enough to stand beside the application on a screen of 1024.
constexpr int widthOfWindow = 564;

/// What an application's window and the gap to it may take.
constexpr int roomBeside = 480;

/// Between the window's sides and what stands in it.
constexpr int edge = 24;

bool canHaveFocus(const QPointer<QWidget>& widget) {
    return widget && widget->isVisibleTo(widget->window()) && widget->isEnabled();
}

bool isHeldKey(const QEvent& event) {
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).isAutoRepeat();
}

QString sentence(const QuestionContent& question) {
    if (question.asker.isEmpty()) return QStringLiteral("%1 is to be removed.").arg(question.name);
    return QStringLiteral("%1 wants to remove %2.").arg(question.asker, question.name);
}

QString hint(qsizetype following) {
    return following == 1 ? QStringLiteral("Another removal follows.")
                          : QStringLiteral("%1 more removals follow.").arg(following);
}

} // namespace

NoticeLine::NoticeLine() {
    setProperty("role", "notice");
    auto& row = newRow(this, {14, 7, 10 - ringMargin, 7}, 6);
    row.addWidget(&text_, 1);
    row.addWidget(&start_);
    text_.setWordWrap(true);
    start_.setAccessibleName("Start the simulated Mac");
    hide();
}

void NoticeLine::tell(const QString& text, bool withStart) {
    setName(*this, text);
    text_.setText(text);
    start_.setVisible(withStart);
    if (isHidden())
        show();
    else
        announce(*this);
}

AuthorizationSheet::AuthorizationSheet(QWidget& window, ControlClient& client) : QWidget{&window} {
    arrange();
    connect(&authorize_, &QPushButton::clicked, this, [this, &client] {
        client.act({"authorize", question_.identifier});
    });
    connect(&refuse_, &QPushButton::clicked, this, [this, &client] { client.act({"refuse", question_.identifier}); });
    hide();
}

void AuthorizationSheet::ask(const QuestionContent& question) {
    following_.setText(hint(question.following));
    following_.setVisible(question.following > 0);
    if (isVisible() && question.number == question_.number) return;
    question_ = question;
    text_.setText(sentence(question));
    identifier_.setText(question.identifier);
    setName(authorize_, "Authorize " + question.name);
    setName(refuse_, "Refuse " + question.name);
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
    auto& column = newColumn(&card_, {22, 20, 22, 18 - ringMargin}, 8);
    column.addWidget(&heading_);
    column.addWidget(&text_);
    column.addWidget(&identifier_);
    column.addWidget(&following_);
    column.addSpacing(8);
    column.addLayout(&newButtons());
}

QBoxLayout& AuthorizationSheet::newButtons() {
    auto& row = newRow(nullptr, {0, 0, -ringMargin, 0}, 8 - 2 * ringMargin);
    row.addStretch();
    for (auto* button : {&refuse_, &authorize_}) {
        button->installEventFilter(this);
        row.addWidget(button);
    }
    return row;
}

QPoint placeFor(const QSize& window, const QRect& screen) {
    const QSize free = screen.size() - window;
    const int left = std::min((free.width() + roomBeside) / 2, free.width());
    return screen.topLeft() + QPoint{std::max(left, 0), std::max(free.height() / 2, 0)};
}

SettingsWindow::SettingsWindow(const QDBusConnection& bus) : client_{bus} {
    setWindowTitle("System Settings");
    setWindowIcon(QIcon{":/images/settings.svg"});
    setProperty("role", "window");
    arrange();
    connectClient();
    hideSections();
    page_.setFocus(); // so that no control shows a focus ring before Tab is pressed
    client_.refresh();
}

void SettingsWindow::Show() {
    // A window of Wayland cannot raise itself, but a new one is in front.
    if (QGuiApplication::platformName() == u"wayland" && !isActiveWindow()) hide();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    QApplication::alert(this);
}

/// What the page did not take, because focus is below it.
void SettingsWindow::keyPressEvent(QKeyEvent* event) {
    auto* const bar = scroll_.verticalScrollBar();
    if (event->matches(QKeySequence::MoveToNextPage)) bar->triggerAction(QScrollBar::SliderPageStepAdd);
    if (event->matches(QKeySequence::MoveToPreviousPage)) bar->triggerAction(QScrollBar::SliderPageStepSub);
}

void SettingsWindow::arrange() {
    arrangePage();
    arrangeFooter();
    auto* const layout = new QGridLayout{this};
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(&scroll_, 0, 0);
    layout->addWidget(&footer_, 1, 0);
    layout->addWidget(&sheet_, 0, 0, 2, 1); // over both
    layout->setRowStretch(0, 1);
    setMinimumSize(widthOfWindow, 260);
    resize(widthOfWindow, 460);
}

void SettingsWindow::arrangePage() {
    page_.setProperty("role", "page");
    auto& column = newColumn(&page_, {edge, 22, edge, 22}, 18);
    column.addWidget(&heading_);
    column.addWidget(&notice_);
    for (auto& section : sections_)
        column.addWidget(&section);
    column.addStretch();
    scroll_.setWidgetResizable(true);
    scroll_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_.setFocusPolicy(Qt::NoFocus);
    scroll_.setWidget(&page_);
    const auto* const bar = scroll_.verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, [bar, &column](int first, int last) {
        column.setContentsMargins(edge, 22, first < last ? edge - bar->sizeHint().width() : edge, 22);
    });
}

void SettingsWindow::arrangeFooter() {
    footer_.setProperty("role", "footer");
    auto& row = newRow(&footer_, {edge, 9, edge - ringMargin, 9}, 6);
    row.addWidget(&hint_, 1);
    row.addWidget(&restart_);
}

void SettingsWindow::connectClient() {
    connect(&client_, &ControlClient::listed, this, &SettingsWindow::showLists);
    connect(&client_, &ControlClient::absent, this, &SettingsWindow::showAbsence);
    connect(&client_, &ControlClient::refused, this, &SettingsWindow::showRefusal);
    connect(&notice_.start(), &QPushButton::clicked, &client_, &ControlClient::refresh);
    connect(&restart_, &QPushButton::clicked, this, [this] { client_.act({"restart"}); });
}

void SettingsWindow::showLists(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests) {
    const auto content = pageOf(copies);
    rememberFocus();
    for (std::size_t place = 0; place < sections_.size(); ++place)
        sections_[place].display(content[place]);
    notice_.hide();
    restart_.setEnabled(true);
    orderTabs();
    showQuestion(questionOf(requests, copies));
    noticeDecisions(decisionsOf(copies, requests));
}

void SettingsWindow::noticeDecisions(const QSet<QString>& decisions) {
    if (decisions_ && !decisions_->contains(decisions)) Show();
    decisions_ = decisions;
}

void SettingsWindow::showRefusal(const QString& reason) {
    notice_.tell(reason, false);
    scroll_.verticalScrollBar()->setValue(0); // where the notice is
}

void SettingsWindow::showAbsence(const QString& reason, bool canBeStarted) {
    rememberFocus();
    hideSections();
    notice_.tell(reason, canBeStarted);
    showQuestion(std::nullopt);
}

void SettingsWindow::hideSections() {
    for (auto& section : sections_)
        section.hide();
    restart_.setEnabled(false);
}

void SettingsWindow::showQuestion(const std::optional<QuestionContent>& question) {
    // Nothing that has focus is disabled or hidden, as the toolkit would then send focus on its own way.
    if (question) sheet_.ask(*question);
    scroll_.setEnabled(!question);
    footer_.setEnabled(!question);
    if (question) return;
    restoreFocus();
    sheet_.hide();
}

/// While a question is open, that is where focus was before.
void SettingsWindow::rememberFocus() {
    if (!sheet_.isHidden()) return;
    focusPlaces_ = {focusWidget()};
    const auto controls = controlsOfExtensions();
    const auto place = std::find(controls.begin(), controls.end(), focusWidget());
    if (place == controls.end()) return;
    std::copy(place, controls.end(), std::back_inserter(focusPlaces_));
    std::copy(std::make_reverse_iterator(place), controls.rend(), std::back_inserter(focusPlaces_));
}

void SettingsWindow::restoreFocus() {
    const auto found = std::find_if(focusPlaces_.begin(), focusPlaces_.end(), canHaveFocus);
    auto& widget = found == focusPlaces_.end() ? page_ : **found;
    widget.setFocus(Qt::OtherFocusReason);
}

void SettingsWindow::orderTabs() {
    const auto order = controlsOfExtensions() + QList<QAbstractButton*>{&restart_};
    QWidget* previous = &notice_.start();
    for (auto* control : order) {
        setTabOrder(previous, control);
        previous = control;
    }
}

QList<QAbstractButton*> SettingsWindow::controlsOfExtensions() const {
    QList<QAbstractButton*> all;
    for (const auto& section : sections_)
        all += section.findChildren<QAbstractButton*>();
    return all;
}

} // namespace simulator::settings
