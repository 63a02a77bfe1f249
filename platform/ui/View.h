#pragma once

#include "platform/ui/Color.h"
#include "platform/ui/Font.h"
#include "platform/ui/Geometry.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

// The first of three stages: describe, lay out, show. A view is an immutable value, a node of the description and the
// modifiers around it in the order in which they were applied. Copying one is cheap. Nothing here knows a window.

namespace platform::ui {

class Node;
class ButtonStyle;

/// A length that is set is the frame's own; an infinite one takes what is offered; an unset one is the content's.
struct FixedFrame {
    std::optional<double> width = std::nullopt;
    std::optional<double> height = std::nullopt;
    Alignment alignment = Alignment::center;
};

/// A bound that is set clamps the length offered; one that is not set is the content's own.
struct FlexibleFrame {
    std::optional<double> minWidth = std::nullopt;
    std::optional<double> maxWidth = std::nullopt;
    std::optional<double> minHeight = std::nullopt;
    std::optional<double> maxHeight = std::nullopt;
    Alignment alignment = Alignment::center;
};

enum class ColorScheme { light };
/// How far a background goes: on under every safe-area edge that the view touches, or no further than the view.
enum class SafeAreaEdges { all, none };
/// A look for group boxes, of which the screens have none.
struct DefaultGroupBoxStyle {};
/// Menus without border, as a small indicator.
struct BorderlessButtonMenuStyle {};

/// What the platform adds to a view of its own accord where no length is given.
inline constexpr double defaultPadding = 16;

struct Capsule;
struct Circle;

class View {
public:
    explicit View(std::shared_ptr<const Node> node) : node_{std::move(node)} {}

    View frame(const FixedFrame& frame) const;
    View frame(const FlexibleFrame& frame) const;
    View padding(double length = defaultPadding) const { return padding(Edge::all, length); }
    View padding(Edge edges, double length = defaultPadding) const;
    View background(Color color, SafeAreaEdges edges = SafeAreaEdges::all) const;
    /// `behind` is offered this view's size and centred on it.
    View background(const View& behind) const;
    /// A rectangle's outline over the view, inset by half its width.
    View border(Color color, double width = 1) const;
    View clipShape(const Capsule& shape) const;
    View clipShape(const Circle& shape) const;

    // These flow down to every view inside that does not set its own.
    View foregroundColor(Color color) const;
    View font(Font font) const;
    View fontWeight(FontWeight weight) const;
    View buttonStyle(std::shared_ptr<const ButtonStyle> style) const;
    template <typename Style>
    View buttonStyle(Style style) const {
        return buttonStyle(std::shared_ptr<const ButtonStyle>{std::make_shared<const Style>(std::move(style))});
    }
    View menuStyle(BorderlessButtonMenuStyle) const;
    View groupBoxStyle(DefaultGroupBoxStyle) const;
    View preferredColorScheme(ColorScheme scheme) const;
    /// The name of a control or an image for assistive technology.
    View accessibilityLabel(std::string label) const;
    /// Changes of the texts inside are announced to assistive technology.
    View accessibilityAnnounced() const;

    const Node& node() const { return *node_; }
    const std::shared_ptr<const Node>& sharedNode() const { return node_; }

private:
    std::shared_ptr<const Node> node_;
};

/// The description as text, a node a line, its modifiers below it in the order applied, its children indented.
std::string describe(const View& view);

} // namespace platform::ui
