#include "simulator/SystemSettings/ExtensionSection.h"

#include "simulator/SystemSettings/Appearance.h"

#include <algorithm>

namespace simulator::settings {

ExtensionSection::ExtensionSection() {
    setLayout(&layout_);
    layout_.setContentsMargins(0, 0, 0, 0);
    layout_.setSpacing(7);
    layout_.addWidget(&title_);
    layout_.addWidget(&card_);
    title_.setTextFormat(Qt::PlainText);
    title_.setFont(fontOf(13, QFont::DemiBold));
    title_.setContentsMargins(2, 0, 0, 0);
    card_.setProperty("role", "card");
    card_.setLayout(&cardLayout_);
    cardLayout_.setContentsMargins(1, 1, 1, 1);
    cardLayout_.setSpacing(0);
    cardLayout_.addWidget(&empty_);
    makeQuiet(empty_, 12);
    empty_.setContentsMargins(14, 14, 14, 14);
}

void ExtensionSection::display(const SectionContent& content) {
    title_.setText(content.title);
    card_.setAccessibleName(content.title);
    empty_.setText(content.textIfEmpty);
    empty_.setVisible(content.extensions.empty());
    Rows before;
    before.swap(rows_);
    for (const auto& extension : content.extensions) {
        rows_.push_back(rowFor(extension, before));
        auto& row = *rows_.back();
        row.separate(rows_.size() > 1);
        cardLayout_.removeWidget(&row);
        cardLayout_.addWidget(&row);
        row.raise(); // the last among the children, which are read in their order
    }
}

std::vector<QWidget*> ExtensionSection::controls() {
    std::vector<QWidget*> all;
    for (const auto& row : rows_)
        for (auto* control : row->controls())
            all.push_back(control);
    return all;
}

std::unique_ptr<ExtensionRow> ExtensionSection::rowFor(const ExtensionContent& content, Rows& before) {
    const auto known = std::find_if(before.begin(), before.end(),
                                    [&content](const auto& row) { return row && row->number() == content.number; });
    if (known == before.end()) return newRow(content);
    (*known)->display(content);
    return std::move(*known);
}

std::unique_ptr<ExtensionRow> ExtensionSection::newRow(const ExtensionContent& content) {
    auto row = std::make_unique<ExtensionRow>(content);
    connect(row.get(), &ExtensionRow::allowed, this, &ExtensionSection::allowed);
    connect(row.get(), &ExtensionRow::denied, this, &ExtensionSection::denied);
    connect(row.get(), &ExtensionRow::switched, this, &ExtensionSection::switched);
    return row;
}

} // namespace simulator::settings
