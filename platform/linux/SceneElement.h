#pragma once

#include <QAccessible>
#include <QObject>
#include <QRectF>
#include <QString>

class QWidget;

namespace platform {

/// A text or an image of the scene as assistive technology sees it. It is the same object from scene to scene, as long
/// as its kind has as many members.
class SceneElement : public QObject {
public:
    /// `canvas` outlives this.
    explicit SceneElement(QWidget& canvas) : canvas_{canvas} {}

    enum class Kind { text, announcedText, image };
    /// Takes over a new kind, name and place, in the canvas's points. A change of an announced text is announced.
    void follow(Kind kind, const QString& name, const QRectF& rect);

    QAccessible::Role role() const;
    const QString& name() const { return name_; }
    QRect screenRect() const;
    QWidget& canvas() const { return canvas_; }

private:
    QWidget& canvas_;
    Kind kind_ = Kind::text;
    QString name_;
    QRectF rect_;
    bool followed_ = false;
};

} // namespace platform
