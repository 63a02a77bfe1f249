#pragma once

#include "platform/macos/Native.h"
#include "platform/ui/Geometry.h"

#include <memory>
#include <string>

namespace platform {

/// A text or an image of the scene as assistive technology sees it. It is the same object from scene to scene, as long
/// as its kind has as many members.
class SceneElement {
public:
    enum class Kind { text, announcedText, image };

    /// `canvas`: the NSView that paints it, which outlives this.
    explicit SceneElement(Native canvas);
    SceneElement(const SceneElement&) = delete;
    SceneElement& operator=(const SceneElement&) = delete;
    ~SceneElement();

    /// Takes over a new kind, name and place, in the canvas's points. A change of an announced text is announced.
    void follow(Kind kind, const std::string& name, const ui::Rect& rect);

    /// An NSAccessibilityElement, as long as this lives.
    Native element() const;

private:
    struct Element;

    std::unique_ptr<Element> element_;
    std::string name_;
    bool followed_ = false;
};

} // namespace platform
