#include "simulator/SystemSettings/ExtensionSection.h"

#include <algorithm>

namespace simulator::settings {

namespace {

/// What has focus while it is hidden would hand it to any control that comes next.
void offerControl(QWidget& control, bool shown) {
    if (!shown) control.clearFocus();
    control.setVisible(shown);
}

} // namespace

ExtensionRow::ExtensionRow(const ExtensionContent& content, ControlClient& client) {
    arrange();
    connect(&allow_, &QPushButton::clicked, this, [this, &client] { client.act({"allow", content_.identifier}); });
    connect(&deny_, &QPushButton::clicked, this, [this, &client] { client.act({"deny", content_.identifier}); });
    connect(&toggle_, &QCheckBox::clicked, this, [this, &client] {
        client.act({toggle_.isChecked() ? "disable" : "enable", content_.identifier});
    });
    display(content);
}

void ExtensionRow::display(const ExtensionContent& content) {
    content_ = content;
    setLook(icon_, "camera", content.isCamera);
    name_.setText(content.name);
    version_.setText(content.version);
    identifier_.setText(content.identifier);
    status_.setText(content.status);
    setLook(status_, "condition", content.condition);
    setName(*this, QStringLiteral("%1 %2, %3").arg(content.name, content.version, content.status));
    setName(allow_, "Allow " + content.name);
    setName(deny_, "Deny " + content.name);
    setName(toggle_, "Enable " + content.name);
    offer(content.condition);
}

void ExtensionRow::arrange() {
    setProperty("role", "item");
    line_.setProperty("role", "line");
    line_.setFixedHeight(1);
    icon_.setProperty("role", "icon");
    icon_.setAttribute(Qt::WA_StyledBackground);
    icon_.setFixedSize(32, 32);
    auto& row = newRow(nullptr, {14, 9, 14 - ringMargin, 9}, 10);
    row.addStrut(34); // with or without buttons
    auto& whole = newColumn(this, {}, 0);
    whole.addWidget(&line_);
    whole.addLayout(&row);
    row.addWidget(&icon_);
    arrangeTexts(row);
    row.addWidget(&status_);
    auto& controls = newRow(nullptr, {}, 10 - 2 * ringMargin);
    row.addLayout(&controls);
    for (QWidget* control : std::initializer_list<QWidget*>{&deny_, &allow_, &toggle_})
        controls.addWidget(control);
}

void ExtensionRow::arrangeTexts(QBoxLayout& row) {
    auto& texts = newColumn(nullptr, {}, 2);
    auto& heading = newRow(nullptr, {}, 7);
    row.addLayout(&texts, 1);
    texts.addLayout(&heading);
    heading.addWidget(&name_);
    heading.addWidget(&version_);
    heading.addStretch();
    texts.addWidget(&identifier_);
}

void ExtensionRow::offer(const QString& condition) {
    const auto waits = condition == u"waiting";
    const auto isOn = condition == u"enabled";
    toggle_.setChecked(isOn);
    offerControl(toggle_, isOn || condition == u"disabled");
    offerControl(allow_, waits);
    offerControl(deny_, waits);
}

ExtensionSection::ExtensionSection(ControlClient& client)
    : client_{client}, lines_{newColumn(&card_, {1, 1, 1, 1}, 0)} {
    auto& layout = newColumn(this, {}, 7);
    layout.addWidget(&title_);
    layout.addWidget(&card_);
    card_.setProperty("role", "card");
    lines_.addWidget(&empty_);
    empty_.setContentsMargins(14, 14, 14, 14);
}

void ExtensionSection::display(const SectionContent& content) {
    title_.setText(content.title);
    setName(card_, content.title);
    empty_.setText(content.textIfEmpty);
    empty_.setVisible(content.extensions.empty());
    replaceRows(content.extensions);
    show();
}

/// What has focus and goes gives it up before the list is hidden: the toolkit would send it on its own way.
void ExtensionSection::replaceRows(const std::vector<ExtensionContent>& extensions) {
    Rows before;
    before.swap(rows_);
    for (const auto& extension : extensions)
        append(rowFor(extension, before));
}

void ExtensionSection::append(std::unique_ptr<ExtensionRow> row) {
    row->separate(!rows_.empty());
    lines_.removeWidget(row.get());
    lines_.addWidget(row.get());
    row->raise(); // the last among the children, which are read in their order
    rows_.push_back(std::move(row));
}

std::unique_ptr<ExtensionRow> ExtensionSection::rowFor(const ExtensionContent& content, Rows& before) {
    const auto known = std::find_if(before.begin(), before.end(),
                                    [&content](const auto& row) { return row && row->number() == content.number; });
    if (known == before.end()) return std::make_unique<ExtensionRow>(content, client_);
    (*known)->display(content);
    return std::move(*known);
}

} // namespace simulator::settings
