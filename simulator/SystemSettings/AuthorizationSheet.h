#pragma once

#include "simulator/SystemSettings/ElidedText.h"
#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace simulator::settings {

/// The administrator's question, hanging from the window's upper edge over everything else. It is there for as long as
/// the question is open, whoever answers it; Escape refuses. The next question takes its place, so the second half of a
/// double click and a key that is held answer nothing. Its parent sizes it, and disables what lies under it.
class AuthorizationSheet : public QWidget {
    Q_OBJECT

public:
    explicit AuthorizationSheet(QWidget& window);

    void ask(const QuestionContent& question);

signals:
    void authorized(const QString& identifier);
    void refused(const QString& identifier);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void arrange();
    void arrangeCard();

    QuestionContent question_;
    QVBoxLayout layout_;
    QFrame card_;
    QVBoxLayout cardLayout_;
    QLabel heading_;
    QLabel text_;
    ElidedText identifier_;
    QHBoxLayout buttons_;
    QPushButton refuse_;
    QPushButton authorize_;
};

} // namespace simulator::settings
