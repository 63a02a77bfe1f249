#pragma once

#include "simulator/SystemSettings/ElidedText.h"
#include "simulator/SystemSettings/ExtensionIcon.h"
#include "simulator/SystemSettings/PrivacyPage.h"
#include "simulator/SystemSettings/StatusText.h"
#include "simulator/SystemSettings/ToggleSwitch.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <vector>

namespace simulator::settings {

/// One copy: what it is, how it stands, and what a person can do about it.
class ExtensionRow : public QWidget {
    Q_OBJECT

public:
    explicit ExtensionRow(const ExtensionContent& content);

    qlonglong number() const { return content_.number; }
    /// What is no longer offered gives keyboard focus up.
    void display(const ExtensionContent& content);
    /// A hairline above, between this row and the one before.
    void separate(bool fromRowAbove);

    /// In reading order, the hidden ones too.
    std::vector<QWidget*> controls();

signals:
    void allowed(const QString& identifier);
    void denied(const QString& identifier);
    void switched(const QString& identifier, bool on);

private:
    void arrange();
    void nameControls();
    void offer(Standing standing);

    ExtensionContent content_;
    QVBoxLayout outer_;
    QFrame line_;
    QHBoxLayout inner_;
    ExtensionIcon icon_;
    QVBoxLayout texts_;
    QHBoxLayout heading_;
    ElidedText name_;
    ElidedText version_;
    ElidedText identifier_;
    StatusText status_;
    QPushButton deny_;
    QPushButton allow_;
    ToggleSwitch toggle_;
};

} // namespace simulator::settings
