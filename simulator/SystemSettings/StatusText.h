#pragma once

#include "simulator/SystemSettings/PrivacyPage.h"

#include <QLabel>

namespace simulator::settings {

/// How an extension stands: a coloured dot and the word for it.
class StatusText : public QLabel {
public:
    StatusText();

    void display(Standing standing, const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Standing standing_ = Standing::preparing;
};

} // namespace simulator::settings
