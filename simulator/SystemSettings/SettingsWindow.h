#pragma once

#include "simulator/SystemSettings/ExtensionSection.h"

#include <QAbstractButton>
#include <QDBusConnection>
#include <QFrame>
#include <QPointer>
#include <QScrollArea>

#include <array>
#include <optional>

namespace simulator::settings {

/// A line that says what is wrong, with a button if a person can do something about it.
class NoticeLine : public QFrame {
public:
    NoticeLine();

    /// Shows the text, and announces it.
    void tell(const QString& text, bool withStart);

    /// Whoever made the line follows its press.
    QPushButton& start() { return start_; }

private:
    PlainText text_{"warning"};
    Button start_{"Start"};
};

/// The administrator's question, hanging from the window's upper edge over everything else. It is there for as long as
/// the question is open, whoever answers it; Escape refuses. The next question takes its place, so the second half of a
/// double click and a key that is held answer nothing. Its parent sizes it, and disables what lies under it.
class AuthorizationSheet : public QWidget {
public:
    /// The client, to which an answer goes, outlives the sheet.
    AuthorizationSheet(QWidget& window, ControlClient& client);

    /// Takes keyboard focus, unless that is the question which it shows already.
    void ask(const QuestionContent& question);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();
    QBoxLayout& newButtons();

    QuestionContent question_;
    QFrame card_;
    PlainText heading_{"heading", "An administrator has to agree"};
    PlainText text_{"sentence"};
    PlainText following_{"hint"};
    ElidedText identifier_{"identifier", Qt::ElideMiddle};
    Button refuse_{"Refuse"};
    Button authorize_{"Authorize", true};
};

/// The name of the one System Settings on a bus.
inline constexpr auto windowName = "com.kelvra.Simulator1.SystemSettings";

/// Where a window of that size opens on a screen: on the right, so that an application's has room beside it. Where
/// there is no window manager, that one stands in the left upper corner.
QPoint placeFor(const QSize& window, const QRect& screen);

/// "Privacy & Security": what a person sees of the simulated Mac's extensions and does about them.
class SettingsWindow : public QWidget {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.kelvra.Simulator1.SystemSettings")

public:
    /// Asks for the lists at once, and follows every change.
    explicit SettingsWindow(const QDBusConnection& bus);

public slots:
    /// Brings it to the front, also if it is minimized or closed; where a window may not do that, it asks for
    /// attention.
    Q_SCRIPTABLE void Show();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();
    void arrangePage();
    void arrangeFooter();
    void connectClient();

    void showLists(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests);
    /// Comes to the front if a person is asked something new. What waited before it was opened is not.
    void noticeDecisions(const QSet<QString>& decisions);
    void showAbsence(const QString& reason, bool canBeStarted);
    void showRefusal(const QString& reason);
    void hideSections();
    void showQuestion(const std::optional<QuestionContent>& question);
    void rememberFocus();
    void restoreFocus();
    void orderTabs();
    /// In reading order, the hidden ones too.
    QList<QAbstractButton*> controlsOfExtensions() const;

    ControlClient client_;
    QScrollArea scroll_;
    QWidget page_;
    PlainText heading_{"title", "Privacy & Security"};
    NoticeLine notice_;
    /// In the order of the page's content.
    std::array<ExtensionSection, 3> sections_{ExtensionSection{client_}, ExtensionSection{client_},
                                              ExtensionSection{client_}};
    QFrame footer_;
    PlainText hint_{"hint", "A restart ends every application."};
    Button restart_{"Restart"};
    AuthorizationSheet sheet_{*this, client_};
    std::optional<QSet<QString>> decisions_;
    /// What had focus before the lists last changed, or the question was asked. If that is one of the controls, the
    /// next ones and then those before it follow, as it may change its place, be hidden, or go.
    QList<QPointer<QWidget>> focusPlaces_;
};

} // namespace simulator::settings
