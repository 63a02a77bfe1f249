#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QLabel>
#include <QMargins>
#include <QPushButton>
#include <QVariant>

class QApplication;

// How System Settings looks, and what its widgets are to assistive technology. Both go by a property of each widget,
// "role": Appearance.qss holds the look of each role, Accessibility.cpp what the toolkit does not know of it. Here are
// the few widgets that no style sheet makes.

namespace simulator::settings {

/// Light colors, one style and one typeface, whatever the desktop's are; and roles for assistive technology. To be
/// called once, before there is a window.
void useAppearance(QApplication& application);

/// From here on assistive technology finds each widget in the role that its property names; part of the above.
void useAccessibility();
/// Sets the name that assistive technology reads. It is told of a new one only.
void setName(QWidget& widget, const QString& name);
/// Has a screen reader speak a notification that it may have spoken before: it does so when one comes into view.
void announce(QWidget& widget);

/// Sets a property that the style sheet asks for, also on a widget that is shown already.
void setLook(QWidget& widget, const char* property, const QVariant& value);

/// Lay out from the top down, and from left to right. A layout fills the widget that is its own; if that is null, the
/// layout that it is added to has a place for it. Both own it.
QBoxLayout& newColumn(QWidget* widget, const QMargins& margins, int spacing);
QBoxLayout& newRow(QWidget* widget, const QMargins& margins, int spacing);

/// A plain text, whatever it holds.
class PlainText : public QLabel {
public:
    explicit PlainText(const char* role, const QString& text = {});
};

/// One line of plain text that gives way to its neighbors: where not all of it fits there is an ellipsis, and all of it
/// is the tool tip. Assistive technology reads all of it.
class ElidedText : public PlainText {
public:
    explicit ElidedText(const char* role, Qt::TextElideMode elision = Qt::ElideRight);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Qt::TextElideMode elision_;
};

/// Between a control's edge and what is seen of it, all around.
constexpr int ringMargin = 3;

/// A button that Return presses as Space does, and that a press of the mouse does not give keyboard focus.
class Button : public QPushButton {
public:
    explicit Button(const QString& text, bool leading = false);

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// A switch that shows what is, not what was pressed: a press only emits clicked(), and whoever hears it calls
/// setChecked() when it has come about. Return presses it, too.
class ToggleSwitch : public QCheckBox {
public:
    ToggleSwitch();

protected:
    void nextCheckState() override {}
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace simulator::settings
