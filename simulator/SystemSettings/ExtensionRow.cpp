#include "simulator/SystemSettings/ExtensionRow.h"

#include "simulator/SystemSettings/Appearance.h"

namespace simulator::settings {

namespace {

/// What has focus while it is hidden would hand it to any control that comes next.
void offerControl(QWidget& control, bool shown) {
    if (!shown) control.clearFocus();
    control.setVisible(shown);
}

} // namespace

ExtensionRow::ExtensionRow(const ExtensionContent& content)
    : name_{fontOf(13, QFont::DemiBold), color::text},
      version_{fontOf(13), color::quietText},
      identifier_{fontOf(11), color::quietText, Qt::ElideMiddle},
      deny_{"Deny"},
      allow_{"Allow"} {
    arrange();
    connect(&allow_, &QPushButton::clicked, this, [this] { emit allowed(content_.identifier); });
    connect(&deny_, &QPushButton::clicked, this, [this] { emit denied(content_.identifier); });
    connect(&toggle_, &ToggleSwitch::clicked, this,
            [this] { emit switched(content_.identifier, !toggle_.isChecked()); });
    display(content);
}

void ExtensionRow::display(const ExtensionContent& content) {
    content_ = content;
    icon_.showCamera(content.isCamera);
    name_.setText(content.name);
    version_.setText(content.version);
    identifier_.setText(content.identifier);
    status_.display(content.standing, content.status);
    setAccessibleName(QStringLiteral("%1 %2, %3").arg(content.name, content.version, content.status));
    nameControls();
    offer(content.standing);
}

void ExtensionRow::separate(bool fromRowAbove) {
    line_.setVisible(fromRowAbove);
}

std::vector<QWidget*> ExtensionRow::controls() {
    return {&deny_, &allow_, &toggle_};
}

void ExtensionRow::arrange() {
    setLayout(&outer_);
    outer_.setContentsMargins(0, 0, 0, 0);
    outer_.setSpacing(0);
    outer_.addWidget(&line_);
    outer_.addLayout(&inner_);
    line_.setProperty("role", "line");
    line_.setFixedHeight(1);
    inner_.setContentsMargins(14, 10, 14, 10);
    inner_.setSpacing(10);
    inner_.addWidget(&icon_);
    inner_.addLayout(&texts_, 1);
    texts_.setSpacing(2);
    texts_.addLayout(&heading_);
    heading_.setSpacing(7);
    heading_.addWidget(&name_);
    heading_.addWidget(&version_);
    heading_.addStretch();
    texts_.addWidget(&identifier_);
    inner_.addWidget(&status_);
    inner_.addSpacing(4);
    allow_.setProperty("leading", true);
    for (auto* button : {&deny_, &allow_}) {
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoDefault(true); // Return presses it, as Space does
        inner_.addWidget(button);
    }
    inner_.addWidget(&toggle_);
}

void ExtensionRow::nameControls() {
    allow_.setAccessibleName("Allow " + content_.name);
    deny_.setAccessibleName("Deny " + content_.name);
    toggle_.setAccessibleName("Enable " + content_.name);
}

void ExtensionRow::offer(Standing standing) {
    const auto waits = standing == Standing::waiting;
    const auto canSwitch = standing == Standing::enabled || standing == Standing::disabled;
    toggle_.setChecked(standing == Standing::enabled);
    offerControl(toggle_, canSwitch);
    offerControl(allow_, waits);
    offerControl(deny_, waits);
}

} // namespace simulator::settings
