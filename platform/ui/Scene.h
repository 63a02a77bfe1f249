#pragma once

#include "platform/ui/Color.h"
#include "platform/ui/Font.h"
#include "platform/ui/Geometry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

// What a layout yields: placed primitives and controls, in painting order. Plain values; a window paints them and
// keeps one native control per Control. The origin is the top left of the safe area, so that what runs on under a
// title bar has negative coordinates.

namespace platform::ui {

enum class ShapeKind { rectangle, capsule, circle };

/// An image by name: an asset of the main bundle's resources or a symbol of the system.
struct ImageReference {
    enum class Source { asset, system };
    std::string name;
    Source source = Source::asset;
    friend bool operator==(const ImageReference&, const ImageReference&) = default;
};

/// A shape filled. A circle is the largest that fits the rectangle, centred; a capsule has round ends.
struct Fill {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    Color color;
    friend bool operator==(const Fill&, const Fill&) = default;
};

/// A shape's outline, the line centred on it.
struct Stroke {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    Color color;
    double lineWidth = 1;
    friend bool operator==(const Stroke&, const Stroke&) = default;
};

/// One line of text, never markup. A truncated one is drawn with an ellipsis that ends it within the rectangle's width.
struct TextRun {
    Rect rect;
    std::string text;
    Font font;
    Color color;
    bool truncated = false;
    /// A change of the text is announced to assistive technology.
    bool announced = false;
    friend bool operator==(const TextRun&, const TextRun&) = default;
};

/// An image stretched over the rectangle; nothing is drawn where it is missing. A symbol is drawn in `color`.
struct ImageRun {
    Rect rect;
    ImageReference image;
    Color color;
    std::string accessibleName;
    friend bool operator==(const ImageRun&, const ImageRun&) = default;
};

struct SceneNode;

/// Content of which only what lies in the shape is seen.
struct Clip {
    Rect rect;
    ShapeKind shape = ShapeKind::rectangle;
    std::vector<SceneNode> content;
    friend bool operator==(const Clip& a, const Clip& b);
};

/// What a control does. Never compared: two scenes that look alike are equal.
struct Action {
    std::function<void()> run;
    friend bool operator==(const Action&, const Action&) { return true; }
};

struct MenuItem {
    std::string title;
    ImageReference image;
    Action action;
    friend bool operator==(const MenuItem&, const MenuItem&) = default;
};

/// Where in the tree of views a control stands; the same place in two scenes is the same control. The first
/// `rowLength` steps lead to the row (the card) that holds it; 0 where no row does.
struct Place {
    std::vector<std::uint32_t> steps;
    std::size_t rowLength = 0;
    bool inSameRowAs(const Place& other) const;
    friend bool operator==(const Place&, const Place&) = default;
};

/// A button or a menu. The content is what is painted for it; its accessible name is never empty.
struct Control {
    enum class Role { button, menu };
    Role role = Role::button;
    Rect rect;
    Place place;
    std::string title;
    std::string accessibleName;
    /// What a button does when pressed.
    Action action;
    /// What a menu offers.
    std::vector<MenuItem> items;
    std::vector<SceneNode> content;
    friend bool operator==(const Control& a, const Control& b);
};

/// The small downward arrow of a menu.
struct MenuIndicator {
    Rect rect;
    Color color;
    friend bool operator==(const MenuIndicator&, const MenuIndicator&) = default;
};

struct SceneNode {
    std::variant<Fill, Stroke, TextRun, ImageRun, MenuIndicator, Clip, Control> value;
    friend bool operator==(const SceneNode&, const SceneNode&) = default;
};

struct Scene {
    Size size;
    EdgeInsets safeArea;
    std::vector<SceneNode> nodes;
    friend bool operator==(const Scene&, const Scene&) = default;
};

/// The controls in reading order. The pointers live as long as the scene does, unchanged.
std::vector<const Control*> controlsOf(const Scene& scene);
std::vector<const Control*> controlsOf(Scene&&) = delete;

/// The scene as text, a line a node, for people and tests: `text 44,13.5 300x15 callout black "Woohoo"`.
std::string describe(const Scene& scene);

} // namespace platform::ui
