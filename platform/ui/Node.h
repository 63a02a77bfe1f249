#pragma once

#include "platform/ui/Elements.h"
#include "platform/ui/Scene.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// The nodes of a view and their layout. Only the elements and modifiers of the toolkit include this.

namespace platform::ui {

class Box;
class Metrics;

/// A proposed size. For an unset length, the view uses its own. Lengths are finite.
struct Proposal {
    std::optional<double> width = std::nullopt;
    std::optional<double> height = std::nullopt;
    friend bool operator==(const Proposal&, const Proposal&) = default;
};

/// What is called before a change, and the subscriptions that a layout has started.
struct Observation {
    std::function<void()> changed;
    std::vector<std::shared_ptr<void>> subscriptions = {};
};

/// What views inherit unless they set their own.
struct Environment {
    /// Never null.
    const Metrics* metrics;
    /// Null for a single layout.
    Observation* observation = nullptr;
    Font font = Font::body;
    /// Replaces the font's own weight.
    std::optional<FontWeight> fontWeight = std::nullopt;
    Color foreground = Color::black;
    ButtonStyle buttonStyle = nullptr;
    /// The axis of the innermost stack around a view.
    Axis stackAxis = Axis::vertical;
    std::string accessibleName = {};
    bool announced = false;
};

/// Shared by the boxes that inherit the same.
using Surroundings = std::shared_ptr<const Environment>;

/// Collects what a layout places, in painting order, and tracks the place in the tree.
class SceneWriter {
public:
    SceneWriter(const Size size, const EdgeInsets safeArea) : scene_{size, safeArea, {}} {}

    void add(SceneNode node) { sink_->push_back(std::move(node)); }
    void prefer(const ColorScheme scheme) { scene_.preferredColorScheme = scheme; }

    /// Returns what `write` adds, instead of adding it to the scene.
    template <typename Write>
    std::vector<SceneNode> collect(Write&& write) {
        std::vector<SceneNode> content;
        auto* outer = std::exchange(sink_, &content);
        write();
        sink_ = outer;
        return content;
    }

    /// Runs `write` with `path` appended to the place.
    template <typename Write>
    void at(const Place& path, Write&& write) {
        const std::size_t length = place_.steps.size();
        const std::size_t rowLength = place_.rowLength;
        place_.steps.insert(place_.steps.end(), path.steps.begin(), path.steps.end());
        if (path.rowLength > 0) place_.rowLength = length + path.rowLength;
        write();
        place_.steps.resize(length);
        place_.rowLength = rowLength;
    }

    const Place& place() const { return place_; }

    /// `rect`, extended under each safe-area edge that it touches.
    Rect underSafeArea(const Rect& rect) const {
        const double left = rect.x <= 0 ? scene_.safeArea.leading : 0;
        const double top = rect.y <= 0 ? scene_.safeArea.top : 0;
        const double right = rect.maxX() >= scene_.size.width ? scene_.safeArea.trailing : 0;
        const double bottom = rect.maxY() >= scene_.size.height ? scene_.safeArea.bottom : 0;
        return {rect.x - left, rect.y - top, rect.width + left + right, rect.height + top + bottom};
    }

    Scene finish() { return std::move(scene_); }

private:
    Scene scene_;
    std::vector<SceneNode>* sink_ = &scene_.nodes;
    Place place_;
};

/// One element or modifier. Immutable. A layout has three steps:
///
///   1. resolve   from parents to children   the node makes its boxes, each with its environment
///   2. size      from children to parents   the parent proposes a size, and the box chooses its own
///   3. place     from parents to children   the parent gives a position, and the box writes into the scene
///
/// A node such as a group makes the boxes of its children and needs neither size nor place.
class Node : public std::enable_shared_from_this<Node> {
public:
    explicit Node(std::vector<View> children = {}) : children_{std::move(children)} {}
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    /// Appends the boxes of this node: one, none for an empty view, several for a group.
    virtual void resolve(const Surroundings& environment, std::vector<Box>& boxes) const;
    /// The size that its box chooses for `proposal`; never infinite or NaN. A negative length counts as 0.
    virtual Size size(Box&, const Proposal&) const { return {}; }
    /// Writes the visible content of its box, which has chosen `frame` for `proposal`.
    virtual void place(Box&, const Rect& /*frame*/, const Proposal&, SceneWriter&) const {}
    /// Whether a stack spaces its box like a line of text.
    virtual bool isText(const Box&) const { return false; }
    /// The minimum length along the stack, of a spacer.
    virtual std::optional<double> spacerMinimum() const { return std::nullopt; }

protected:
    /// Appends the boxes of all children; each knows the position of its child.
    void resolveChildren(const Surroundings& environment, std::vector<Box>& boxes) const;
    const std::vector<View>& children() const { return children_; }

private:
    std::vector<View> children_;
};

/// A node during one layout. It caches its sizes, so that the cost of a layout is linear in the number of nodes.
class Box {
public:
    Box(std::shared_ptr<const Node> node, Surroundings environment, std::vector<Box> inside = {})
        : node_{std::move(node)}, environment_{std::move(environment)}, inside_{std::move(inside)} {}

    const Environment& environment() const { return *environment_; }
    std::vector<Box>& inside() { return inside_; }
    /// The content of a modifier: the last box inside.
    Box& content() { return inside_.back(); }
    const Box& content() const { return inside_.back(); }

    Size size(const Proposal& proposal);
    void rememberAllSizes() { remembersAllSizes_ = true; } // as a stack must, which asks its members several times
    /// Writes the box at `origin`, in the size that it chose for `proposal`.
    void place(const Point origin, const Proposal& proposal, SceneWriter& scene) {
        const Size own = size(proposal);
        scene.at(path_, [&] { node_->place(*this, {origin.x, origin.y, own.width, own.height}, proposal, scene); });
    }

    bool isText() const { return node_->isText(*this); }
    std::optional<double> spacerMinimum() const { return node_->spacerMinimum(); }

    /// The box is, or is in, child number `step` of the enclosing node.
    void standAt(const std::uint32_t step) {
        path_.steps.insert(path_.steps.begin(), step);
        if (path_.rowLength > 0) ++path_.rowLength;
    }
    /// The steps up to here lead to a row.
    void beginRow() { path_.rowLength = 1; }
    /// Whether no step leads to it: it is the only box of its node.
    bool isAlone() const { return path_.steps.empty(); }

private:
    std::shared_ptr<const Node> node_;
    Surroundings environment_;
    std::vector<Box> inside_;
    /// The steps that lead to it from the box around it.
    Place path_;
    std::vector<std::pair<Proposal, Size>> sizes_;
    bool remembersAllSizes_ = false;
};

/// A modifier of one view, its content. By default, both have the same size.
class Modifier : public Node {
public:
    explicit Modifier(View content) : Node{{std::move(content)}} {}

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override;
    Size size(Box& box, const Proposal& proposal) const override { return box.content().size(proposal); }
    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        box.content().place(frame.origin(), proposal, scene);
    }
    bool isText(const Box& box) const override { return box.content().isText(); }

protected:
    /// With `behind`, which is painted and read before the content.
    Modifier(View behind, View content) : Node{{std::move(behind), std::move(content)}} {}
};

/// Appends one box for a view: its only one, or its members in a vertical stack.
void appendBoxOf(const View& view, const Surroundings& environment, std::vector<Box>& boxes);

template <typename NodeType, typename... Arguments>
View makeView(Arguments&&... arguments) {
    return View{std::make_shared<const NodeType>(std::forward<Arguments>(arguments)...)};
}

/// Where something as long as `inner` starts inside `outer`.
double offset(HorizontalAlignment alignment, double outer, double inner);
/// The top left of something as large as `inner` inside `outer`.
inline Point offset(const Alignment alignment, const Size outer, const Size inner) {
    return {offset(alignment, outer.width, inner.width), offset(Alignment::center, outer.height, inner.height)};
}

} // namespace platform::ui
