#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

// The first of three stages: describe, lay out, show. A view is an immutable value, a node of the description and the
// modifiers around it in the order in which they were applied. Copying one is cheap. Nothing here knows a window.

namespace platform::ui {

class Node;
class View;
struct ButtonStyleConfiguration;

/// A length that is set is the frame's own; an infinite one takes what is offered; an unset one is the content's.
struct FixedFrame {
    std::optional<double> width = std::nullopt;
    std::optional<double> height = std::nullopt;
    Alignment alignment = Alignment::center;
};

/// As long as what is offered, but no longer than a bound that is set, and no shorter than the content unless the bound
/// is; where none is set, as long as the content.
struct FlexibleFrame {
    std::optional<double> maxWidth = std::nullopt;
    std::optional<double> maxHeight = std::nullopt;
    Alignment alignment = Alignment::center;
};

/// A look for group boxes, of which the screens have none.
struct DefaultGroupBoxStyle {};
/// Menus without border, as a small indicator.
struct BorderlessButtonMenuStyle {};
/// A rectangle with round ends, for clipping.
struct Capsule {};
struct Circle;

/// What the platform adds to a view of its own accord where no length is given.
inline constexpr double defaultPadding = 16;

/// What describes itself by other views: a screen or a part of one.
template <typename Description>
concept HasBody = requires(const Description& description) {
    { description.body() } -> std::same_as<View>;
};

/// The look of a button as a function of what it is given.
using ButtonStyle = std::function<View(const ButtonStyleConfiguration&)>;

class View {
public:
    explicit View(std::shared_ptr<const Node> node) : node_{std::move(node)} {}
    /// Whatever has a body is a view, so that screens nest as they read.
    template <HasBody Description>
    View(const Description& description) : View{description.body()} {}

    View frame(const FixedFrame& frame) const;
    View frame(const FlexibleFrame& frame) const;
    View padding(double length = defaultPadding) const { return padding(Edge::all, length); }
    View padding(Edge edges, double length = defaultPadding) const;
    /// On under every safe-area edge that the view touches.
    View background(Color color) const;
    /// `behind` is offered this view's size and centered on it.
    View background(const View& behind) const;
    /// A rectangle's outline over the view, inset by half its width.
    View border(Color color, double width = 1) const;
    View clipShape(const Capsule& shape) const;
    View clipShape(const Circle& shape) const;

    // These flow down to every view inside that does not set its own.
    View foregroundColor(Color color) const;
    View font(Font font) const;
    View fontWeight(FontWeight weight) const;
    View buttonStyle(ButtonStyle style) const;
    /// Whatever makes a body of a button's configuration is a style.
    template <typename Style>
    requires requires(const Style& style, const ButtonStyleConfiguration& button) { style.makeBody(button); }
    View buttonStyle(const Style& style) const {
        return buttonStyle([style](const ButtonStyleConfiguration& button) { return style.makeBody(button); });
    }
    View menuStyle(BorderlessButtonMenuStyle) const { return *this; }
    View groupBoxStyle(DefaultGroupBoxStyle) const { return *this; }
    /// The name of a control or an image for assistive technology.
    View accessibilityLabel(std::string label) const;
    /// Changes of the texts inside are announced to assistive technology.
    View accessibilityAnnounced() const;

    /// Asks the window that shows the view for these colors.
    View preferredColorScheme(ColorScheme scheme) const;

    const Node& node() const { return *node_; }

private:
    std::shared_ptr<const Node> node_;
};

} // namespace platform::ui
