#pragma once

#include "simulator/SystemSettings/Appearance.h"
#include "simulator/SystemSettings/ControlClient.h"
#include "simulator/SystemSettings/PrivacyPage.h"

#include <QFrame>

#include <memory>
#include <vector>

namespace simulator::settings {

/// One copy: what it is, how it stands, and what a person can do about it. A press goes to the client, which outlives
/// the row.
class ExtensionRow : public QWidget {
public:
    ExtensionRow(const ExtensionContent& content, ControlClient& client);

    qlonglong number() const { return content_.number; }
    /// What is no longer offered gives keyboard focus up.
    void display(const ExtensionContent& content);
    /// A hairline above, between this row and the one before.
    void separate(bool fromRowAbove) { line_.setVisible(fromRowAbove); }

private:
    void arrange();
    void arrangeTexts(QBoxLayout& row);
    void offer(const QString& condition);

    ExtensionContent content_;
    QFrame line_;
    QWidget icon_;
    ElidedText name_{"name"};
    ElidedText version_{"version"};
    ElidedText identifier_{"identifier", Qt::ElideMiddle};
    PlainText status_{"status"};
    Button deny_{"Deny"};
    Button allow_{"Allow", true};
    ToggleSwitch toggle_;
};

/// A list of extensions under its title.
class ExtensionSection : public QWidget {
public:
    /// The client outlives the list.
    explicit ExtensionSection(ControlClient& client);

    /// A copy that was shown before keeps its row, and with it keyboard focus.
    void display(const SectionContent& content);

private:
    using Rows = std::vector<std::unique_ptr<ExtensionRow>>;

    void replaceRows(const std::vector<ExtensionContent>& extensions);
    void append(std::unique_ptr<ExtensionRow> row);
    std::unique_ptr<ExtensionRow> rowFor(const ExtensionContent& content, Rows& before);

    ControlClient& client_;
    PlainText title_{"heading"};
    QFrame card_;
    QBoxLayout& lines_;
    PlainText empty_{"hint"};
    Rows rows_;
};

} // namespace simulator::settings
