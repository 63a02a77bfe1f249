#pragma once

#include "simulator/SystemSettings/Appearance.h"
#include "simulator/SystemSettings/ControlClient.h"
#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFrame>

namespace simulator::settings {

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
    ElidedText identifier_{"identifier", Qt::ElideMiddle};
    Button refuse_{"Refuse"};
    Button authorize_{"Authorize", true};
};

} // namespace simulator::settings
