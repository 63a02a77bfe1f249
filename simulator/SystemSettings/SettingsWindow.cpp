#include "simulator/SystemSettings/SettingsWindow.h"

#include "simulator/SystemSettings/Appearance.h"

namespace simulator::settings {

namespace {

/// Room for a row of every kind and the scroll bar; narrow enough to stand beside the application on a screen of 1024.
constexpr int widthOfWindow = 564;

} // namespace

SettingsWindow::SettingsWindow(const QDBusConnection& bus)
    : client_{bus},
      heading_{"Privacy & Security"},
      hint_{"A restart ends every application."},
      restart_{"Restart"},
      sheet_{*this} {
    setWindowTitle("System Settings");
    arrange();
    for (auto* section : {&cameras_, &drivers_, &others_})
        connectSection(*section);
    connectClient();
    showSections(false);
    page_.setFocus(); // so that no control shows a focus ring before Tab is pressed
    client_.refresh();
}

void SettingsWindow::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    sheet_.setGeometry(rect());
}

void SettingsWindow::arrange() {
    setLayout(&layout_);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(0);
    arrangePage();
    arrangeFooter();
    layout_.addWidget(&scroll_, 1);
    layout_.addWidget(&footer_);
    setMinimumSize(widthOfWindow, 260);
    resize(widthOfWindow, 460);
}

void SettingsWindow::arrangePage() {
    page_.setProperty("role", "page");
    page_.setLayout(&pageLayout_);
    pageLayout_.setContentsMargins(24, 22, 24, 22);
    pageLayout_.setSpacing(18);
    heading_.setTextFormat(Qt::PlainText);
    heading_.setFont(fontOf(22, QFont::Bold));
    pageLayout_.addWidget(&heading_);
    pageLayout_.addWidget(&notice_);
    for (auto* section : {&cameras_, &drivers_, &others_})
        pageLayout_.addWidget(section);
    pageLayout_.addStretch();
    scroll_.setWidgetResizable(true);
    scroll_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll_.setFocusPolicy(Qt::NoFocus);
    scroll_.setWidget(&page_);
}

void SettingsWindow::arrangeFooter() {
    footer_.setProperty("role", "footer");
    footer_.setLayout(&footerLayout_);
    footerLayout_.setContentsMargins(24, 12, 24, 12);
    footerLayout_.addWidget(&hint_, 1);
    footerLayout_.addWidget(&restart_);
    makeQuiet(hint_, 12);
    restart_.setFocusPolicy(Qt::TabFocus);
    restart_.setAutoDefault(true);
}

void SettingsWindow::connectSection(ExtensionSection& section) {
    connect(&section, &ExtensionSection::allowed, &client_, &ControlClient::allow);
    connect(&section, &ExtensionSection::denied, &client_, &ControlClient::deny);
    connect(&section, &ExtensionSection::switched, this, [this](const QString& identifier, bool on) {
        on ? client_.enable(identifier) : client_.disable(identifier);
    });
}

void SettingsWindow::connectClient() {
    connect(&client_, &ControlClient::listed, this, &SettingsWindow::showLists);
    connect(&client_, &ControlClient::absent, this, &SettingsWindow::showAbsence);
    connect(&client_, &ControlClient::refused, &notice_, qOverload<const QString&>(&NoticeLine::tell));
    connect(&notice_, &NoticeLine::startPressed, &client_, &ControlClient::refresh);
    connect(&restart_, &QPushButton::clicked, &client_, &ControlClient::restart);
    connect(&sheet_, &AuthorizationSheet::authorized, &client_, &ControlClient::authorize);
    connect(&sheet_, &AuthorizationSheet::refused, &client_, &ControlClient::refuse);
}

void SettingsWindow::showLists(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests) {
    const auto content = pageOf(copies);
    rememberFocus();
    cameras_.display(content.cameras);
    drivers_.display(content.drivers);
    others_.display(content.others);
    notice_.withdraw();
    showSections(true);
    others_.setVisible(!content.others.extensions.empty());
    orderTabs();
    showQuestion(questionOf(requests, copies));
}

void SettingsWindow::showAbsence(const QString& reason, bool canBeStarted) {
    rememberFocus();
    showSections(false);
    canBeStarted ? notice_.offerStart(reason) : notice_.tell(reason);
    showQuestion(std::nullopt);
}

void SettingsWindow::showSections(bool shown) {
    for (auto* section : {&cameras_, &drivers_, &others_})
        section->setVisible(shown);
    restart_.setEnabled(shown);
}

void SettingsWindow::showQuestion(const std::optional<QuestionContent>& question) {
    // Nothing that has focus is disabled or hidden, as the toolkit would then send focus on its own way.
    if (question) sheet_.ask(*question);
    scroll_.setEnabled(!question);
    footer_.setEnabled(!question);
    if (question) return;
    focusPlace_.restore(page_);
    sheet_.hide();
}

/// While a question is open, that is where focus was before.
void SettingsWindow::rememberFocus() {
    if (sheet_.isHidden()) focusPlace_ = {focusWidget(), controlsOfExtensions()};
}

void SettingsWindow::orderTabs() {
    auto* previous = notice_.control();
    const auto append = [&previous](QWidget* next) {
        setTabOrder(previous, next);
        previous = next;
    };
    for (auto* control : controlsOfExtensions())
        append(control);
    append(&restart_);
}

std::vector<QWidget*> SettingsWindow::controlsOfExtensions() {
    std::vector<QWidget*> all;
    for (auto* section : {&cameras_, &drivers_, &others_}) {
        const auto controls = section->controls();
        all.insert(all.end(), controls.begin(), controls.end());
    }
    return all;
}

} // namespace simulator::settings
