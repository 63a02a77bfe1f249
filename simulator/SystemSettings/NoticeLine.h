#pragma once

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace simulator::settings {

/// A line that says what is wrong, with a button if a person can do something about it.
class NoticeLine : public QFrame {
    Q_OBJECT

public:
    NoticeLine();

    void tell(const QString& text);
    void offerStart(const QString& text);
    void withdraw();

    QWidget* control() { return &start_; }

signals:
    void startPressed();

private:
    void tell(const QString& text, bool withButton);

    QHBoxLayout layout_;
    QLabel text_;
    QPushButton start_;
};

} // namespace simulator::settings
