#pragma once

#include "platform/ui/Color.h"
#include "platform/ui/Font.h"
#include "platform/ui/Geometry.h"
#include "platform/ui/LayoutNode.h"
#include "platform/ui/View.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

// What a view is made of. Only the elements and modifiers of the toolkit include this.

namespace platform::ui {

class Metrics;

/// What flows down the tree to the views that do not set their own.
struct Environment {
    const Metrics* metrics;
    Font font = Font::body;
    /// Takes the place of the font's own weight.
    std::optional<FontWeight> fontWeight = std::nullopt;
    Color foreground = Color::black;
    std::shared_ptr<const ButtonStyle> buttonStyle = nullptr;
    /// The axis of the innermost stack around a view.
    Axis stackAxis = Axis::vertical;
    std::string accessibleName = {};
    bool announced = false;
};

/// Collects a description line by line.
class Description {
public:
    void line(const std::string& text) { text_ += std::string(2 * depth_, ' ') + text + "\n"; }
    void modifier(const std::string& text) { line("  ." + text); }
    void children(const std::vector<View>& views);
    void child(const View& view) { children({view}); }
    const std::string& text() const { return text_; }

private:
    std::string text_;
    std::size_t depth_ = 0;
};

/// One element or modifier of a description. Immutable.
class Node {
public:
    Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    /// Appends what is laid out for this node: one member, none for an empty view, several for a group.
    virtual void resolve(const Environment& environment, std::vector<LayoutMember>& members) const = 0;
    virtual void describe(Description& description) const = 0;
    virtual void visitChildren(const std::function<void(const View&)>&) const {}
    /// Calls `changed` before each change of what this node observes, for as long as the result lives; null if it
    /// observes nothing.
    virtual std::shared_ptr<void> subscribe(const std::function<void()>& /*changed*/) const { return nullptr; }
};

/// What a view lays out, as one: its only member, or its members one above the other.
std::unique_ptr<LayoutNode> resolveOne(const View& view, const Environment& environment);

/// A modifier around one view.
class ModifierNode : public Node {
public:
    explicit ModifierNode(View content) : content_{std::move(content)} {}

    void resolve(const Environment& environment, std::vector<LayoutMember>& members) const override;
    void describe(Description& description) const override;
    void visitChildren(const std::function<void(const View&)>& visit) const override { visit(content_); }

protected:
    /// The layout of the modified view; by default the modifier has no effect on it.
    virtual std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const {
        return content;
    }
    /// The environment of what is inside.
    virtual Environment inside(const Environment& environment) const { return environment; }
    /// What was applied, as it is written in code.
    virtual std::string text() const = 0;

private:
    View content_;
};

template <typename NodeType, typename... Arguments>
View makeView(Arguments&&... arguments) {
    return View{std::make_shared<const NodeType>(std::forward<Arguments>(arguments)...)};
}

} // namespace platform::ui
