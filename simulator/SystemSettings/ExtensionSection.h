#pragma once

#include "simulator/SystemSettings/ExtensionRow.h"
#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>

#include <memory>
#include <vector>

namespace simulator::settings {

/// A list of extensions under its title.
class ExtensionSection : public QWidget {
    Q_OBJECT

public:
    ExtensionSection();

    /// A copy that was shown before keeps its row, and with it keyboard focus.
    void display(const SectionContent& content);

    /// In reading order.
    std::vector<QWidget*> controls();

signals:
    void allowed(const QString& identifier);
    void denied(const QString& identifier);
    void switched(const QString& identifier, bool on);

private:
    using Rows = std::vector<std::unique_ptr<ExtensionRow>>;

    std::unique_ptr<ExtensionRow> rowFor(const ExtensionContent& content, Rows& before);
    std::unique_ptr<ExtensionRow> newRow(const ExtensionContent& content);

    QVBoxLayout layout_;
    QLabel title_;
    QFrame card_;
    QVBoxLayout cardLayout_;
    QLabel empty_;
    Rows rows_;
};

} // namespace simulator::settings
