#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// The result of a layout: placed primitives and controls, in painting order. A window paints them and keeps one native
// control per Control. The origin is the top left of the safe area; content under a title bar has negative coordinates.

namespace platform::ui {

enum class ShapeKind { rectangle, capsule, circle };

/// An image by name: an asset of the main bundle's resources or a symbol of the system.
struct ImageReference {
    enum class Source { asset, system };
    std::string name;
    Source source = Source::asset;
    friend bool operator==(const ImageReference&, const ImageReference&) = default;
};

/// A filled shape. A circle is the largest that fits the rectangle, centered; a capsule has round ends.
struct Fill {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    Color color;
    friend bool operator==(const Fill&, const Fill&) = default;
};

/// A shape's outline, the line centered on it.
struct Stroke {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    Color color;
    double lineWidth = 1;
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

/// One line of text, never markup. A truncated one ends in an ellipsis within the rectangle's width.
struct TextRun {
    Rect rect;
    std::string text;
    Font font;
    Color color;
    bool truncated = false;
    /// Assistive technology announces a change of the text.
    bool announced = false;
    friend bool operator==(const TextRun&, const TextRun&) = default;
};

/// An image stretched to the rectangle; nothing if it is missing. A symbol is drawn in `color`.
struct ImageRun {
    Rect rect;
    ImageReference image;
    Color color;
    /// Empty for a decorative image.
    std::string accessibleName;
    friend bool operator==(const ImageRun&, const ImageRun&) = default;
};

/// The small downward arrow of a menu.
struct MenuIndicator {
    Rect rect;
    Color color;
    friend bool operator==(const MenuIndicator&, const MenuIndicator&) = default;
};

struct SceneNode;

/// Content of which only the part inside the shape is visible.
struct Clip {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    std::vector<SceneNode> content;
    friend bool operator==(const Clip& a, const Clip& b);
};

/// What a control does. All actions compare equal: scenes that look alike are equal.
struct Action {
    std::function<void()> run;
    friend bool operator==(const Action&, const Action&) { return true; }
};

/// An item of a menu, with the symbol before its title.
struct MenuItem {
    std::string title;
    ImageReference image;
    Action action;
    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

/// The place of a control in the tree of views; the same place in two scenes is the same control. The places of a scene
/// differ and compare in painting order. The first `rowLength` steps lead to its row (a card); 0 if it is in no row.
struct Place {
    std::vector<std::uint32_t> steps;
    std::size_t rowLength = 0;
    friend bool operator==(const Place&, const Place&) = default;
};

/// A control that runs its action once per press.
struct PushButton {
    Action action;
    friend bool operator==(const PushButton&, const PushButton&) = default;
};

/// A control that opens a menu of its items.
struct PullDownMenu {
    std::vector<MenuItem> items;
    friend bool operator==(const PullDownMenu&, const PullDownMenu&) = default;
};

/// A button or a menu. `content` is what is painted; the accessible name is never empty.
struct Control {
    Rect rect;
    Place place;
    std::string accessibleName;
    /// Visit it, so that the compiler reports a missing third kind.
    std::variant<PushButton, PullDownMenu> kind;
    std::vector<SceneNode> content;
    friend bool operator==(const Control& a, const Control& b);
};

struct SceneNode {
    std::variant<Fill, Stroke, TextRun, ImageRun, MenuIndicator, Clip, Control> value;
    friend bool operator==(const SceneNode&, const SceneNode&) = default;
};

inline bool operator==(const Clip& a, const Clip& b) {
    return a.rect == b.rect && a.shape == b.shape && a.content == b.content;
}
inline bool operator==(const Control& a, const Control& b) {
    return a.rect == b.rect && a.place == b.place && a.accessibleName == b.accessibleName && a.kind == b.kind &&
           a.content == b.content;
}

/// The content of a window. `size` is that of the safe area. Without a preferred color scheme, the desktop's applies.
struct Scene {
    Size size;
    EdgeInsets safeArea;
    std::vector<SceneNode> nodes;
    std::optional<ColorScheme> preferredColorScheme = std::nullopt;
    friend bool operator==(const Scene&, const Scene&) = default;
};

/// One function per alternative of a variant: `std::visit(Cases{[](const PushButton&) {...}, ...}, control.kind)`.
template <typename... Functions>
struct Cases : Functions... {
    using Functions::operator()...;
};
template <typename... Functions>
Cases(Functions...) -> Cases<Functions...>;

} // namespace platform::ui
