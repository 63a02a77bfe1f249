#pragma once

#include "platform/ui/Geometry.h"

#include <QAccessible>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <string>

// What assistive technology sees of the window.

namespace platform {

/// While one lives, assistive technology sees the window's scene: its texts, images and controls in reading order,
/// each with its role, name and place on the screen, and the actions of the controls.
class SceneAccessibility {
public:
    SceneAccessibility();
    SceneAccessibility(const SceneAccessibility&) = delete;
    SceneAccessibility& operator=(const SceneAccessibility&) = delete;
    ~SceneAccessibility();
};

/// A text or a named image of the scene. The canvas owns it.
class SceneElement : public QObject {
public:
    explicit SceneElement(QWidget& canvas) : QObject{&canvas}, canvas_{canvas} {}

    /// Takes over a role, a name and a place, in the canvas's points. A new name is told; that of a notification is
    /// announced.
    void follow(QAccessible::Role role, const std::string& name, const ui::Rect& rect);

    QAccessible::Role role() const { return role_; }
    const QString& name() const { return name_; }
    const QRectF& rect() const { return rect_; }
    QWidget& canvas() const { return canvas_; }

private:
    QWidget& canvas_;
    QAccessible::Role role_ = QAccessible::NoRole;
    QString name_;
    QRectF rect_;
};

/// Tells assistive technology, which remembers what it has seen, what happened to an object.
void tellAccessibility(QObject& object, QAccessible::Event type);

} // namespace platform
