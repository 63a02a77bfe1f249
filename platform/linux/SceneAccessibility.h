#pragma once

#include "platform/ui/Geometry.h"

#include <QAccessible>
#include <QObject>
#include <QRectF>
#include <QString>
#include <QWidget>

#include <string>

namespace platform {

/// From now on, assistive technology sees the texts, images, and controls of scenes in reading order, with roles,
/// names, positions, and actions. Needs the QApplication.
void makeScenesAccessible();

/// A text or a named image of the scene, owned by the canvas.
class SceneElement : public QObject {
public:
    explicit SceneElement(QWidget& canvas) : QObject{&canvas}, canvas_{canvas} {}

    /// Updates role, name, and position (in points of the canvas). Screen readers announce a notification's new name.
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

/// Notifies assistive technology of an event on an object.
void tellAccessibility(QObject& object, QAccessible::Event type);

} // namespace platform
