#pragma once

#include "platform/ui/Geometry.h"
#include "platform/ui/Style.h"

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

// The first of three stages: describe, lay out, show. A view is an immutable value, cheap to copy: an element and its
// modifiers in the order in which they were applied.

namespace platform::ui {

class Node;
class View;
struct ButtonStyleConfiguration;

/// A set length is the frame's own; an infinite one takes what is offered; an unset one is the content's.
struct FixedFrame {
    std::optional<double> width = std::nullopt;
    std::optional<double> height = std::nullopt;
    Alignment alignment = Alignment::center;
};

/// With a bound: as long as offered, but not longer than the bound, and not shorter than the content unless the bound
/// is. Without one: as long as the content.
struct FlexibleFrame {
    std::optional<double> maxWidth = std::nullopt;
    std::optional<double> maxHeight = std::nullopt;
    Alignment alignment = Alignment::center;
};

/// A style for group boxes, which no screen has.
struct DefaultGroupBoxStyle {};
/// A menu without a border, as a small indicator.
struct BorderlessButtonMenuStyle {};
/// A rectangle with round ends, for clipping.
struct Capsule {};
struct Circle;

/// The default padding of the platform.
inline constexpr double defaultPadding = 16;

/// A type that describes itself with other views: a screen or a part of one.
template <typename Description>
concept HasBody = requires(const Description& description) {
    { description.body() } -> std::same_as<View>;
};

/// The look of a button as a function of its configuration.
using ButtonStyle = std::function<View(const ButtonStyleConfiguration&)>;

class View {
public:
    explicit View(std::shared_ptr<const Node> node) : node_{std::move(node)} {}
    /// Anything with a body is a view, so that screens nest.
    template <HasBody Description>
    View(const Description& description) : View{description.body()} {}

    View frame(const FixedFrame& frame) const;
    View frame(const FlexibleFrame& frame) const;
    View padding(double length = defaultPadding) const { return padding(Edge::all, length); }
    View padding(Edge edges, double length = defaultPadding) const;
    /// Extends under every safe-area edge that the view touches.
    View background(Color color) const;
    /// `behind` is offered this view's size and centered on it.
    View background(const View& behind) const;
    /// A rectangle's outline over the view, inset by half its width; it is no wider than the view.
    View border(Color color, double width = 1) const;
    View clipShape(const Capsule& shape) const;
    View clipShape(const Circle& shape) const;

    // Views inside inherit these unless they set their own.
    View foregroundColor(Color color) const;
    View font(Font font) const;
    View fontWeight(FontWeight weight) const;
    View buttonStyle(ButtonStyle style) const;
    /// Anything that makes a body from a button's configuration is a style.
    template <typename Style>
    requires requires(const Style& style, const ButtonStyleConfiguration& button) { style.makeBody(button); }
    View buttonStyle(const Style& style) const {
        return buttonStyle([style](const ButtonStyleConfiguration& button) { return style.makeBody(button); });
    }
    View menuStyle(BorderlessButtonMenuStyle) const { return *this; }
    View groupBoxStyle(DefaultGroupBoxStyle) const { return *this; }
    /// The name of a control or an image for assistive technology.
    View accessibilityLabel(std::string label) const;
    /// Assistive technology announces changes of the texts inside.
    View accessibilityAnnounced() const;

    /// Asks the window for these colors.
    View preferredColorScheme(ColorScheme scheme) const;

    const Node& node() const { return *node_; }

private:
    std::shared_ptr<const Node> node_;
};

} // namespace platform::ui
