#include "platform/ui/Node.h"
#include "platform/ui/NumberText.h"
#include "platform/ui/SceneWriter.h"

#include <algorithm>
#include <cmath>

namespace platform::ui {

namespace {

/// Both kinds of frame: a proposal of its own for the content, a length of its own, and the content aligned in it.
class FrameLayout : public WrappingLayoutNode {
public:
    FrameLayout(std::unique_ptr<LayoutNode> content, const Alignment alignment)
        : WrappingLayoutNode{std::move(content)}, alignment_{alignment} {}

    void place(const Point origin, const Proposal& proposal, SceneWriter& writer) override {
        const Proposal offered = inside(proposal);
        const Point at = offset(alignment_, size(proposal), content().size(offered));
        content().place({origin.x + at.x, origin.y + at.y}, offered, writer);
    }

protected:
    virtual Proposal inside(const Proposal& proposal) const = 0;

private:
    Alignment alignment_;
};

class FixedFrameLayout : public FrameLayout {
public:
    FixedFrameLayout(std::unique_ptr<LayoutNode> content, const FixedFrame& frame)
        : FrameLayout{std::move(content), frame.alignment}, frame_{frame} {}

protected:
    Proposal inside(const Proposal& proposal) const override {
        return {length(frame_.width, proposal.width), length(frame_.height, proposal.height)};
    }
    Size measure(const Proposal& proposal) override {
        const Proposal offered = inside(proposal);
        const Size own = content().size(offered);
        return {frame_.width ? offered.width.value_or(own.width) : own.width,
                frame_.height ? offered.height.value_or(own.height) : own.height};
    }

private:
    static std::optional<double> length(const std::optional<double> set, const std::optional<double> offered) {
        return set && std::isfinite(*set) ? set : offered;
    }

    FixedFrame frame_;
};

/// One axis of a flexible frame.
struct Bounds {
    std::optional<double> least;
    std::optional<double> most;

    bool anySet() const { return least || most; }

    std::optional<double> inside(const std::optional<double> offered) const {
        if (!offered) return std::nullopt;
        return std::max(least.value_or(0), std::min(finite(most).value_or(*offered), *offered));
    }
    double length(const std::optional<double> offered, const double own) const {
        if (!anySet()) return own;
        const double low = least ? *least : std::min(own, *finite(most));
        const double high = most ? std::max(*finite(most), low) : std::max(own, low);
        return std::clamp(offered.value_or(own), low, high);
    }
    static std::optional<double> finite(const std::optional<double> bound) {
        return bound ? std::optional{std::min(*bound, greatestFiniteMagnitude)} : std::nullopt;
    }
};

class FlexibleFrameLayout : public FrameLayout {
public:
    FlexibleFrameLayout(std::unique_ptr<LayoutNode> content, const FlexibleFrame& frame)
        : FrameLayout{std::move(content), frame.alignment},
          horizontal_{frame.minWidth, frame.maxWidth},
          vertical_{frame.minHeight, frame.maxHeight} {}

protected:
    Proposal inside(const Proposal& proposal) const override {
        return {horizontal_.inside(proposal.width), vertical_.inside(proposal.height)};
    }
    Size measure(const Proposal& proposal) override {
        const Size own = content().size(inside(proposal));
        return {horizontal_.length(proposal.width, own.width), vertical_.length(proposal.height, own.height)};
    }

private:
    Bounds horizontal_;
    Bounds vertical_;
};

template <typename Frame, typename Layout>
class FrameNode : public ModifierNode {
public:
    FrameNode(View content, const Frame& frame) : ModifierNode{std::move(content)}, frame_{frame} {}

protected:
    std::unique_ptr<LayoutNode> wrap(std::unique_ptr<LayoutNode> content, const Environment&) const override {
        return std::make_unique<Layout>(std::move(content), frame_);
    }
    std::string text() const override { return "frame" + lengths(frame_) + " " + nameOf(frame_.alignment); }

private:
    static std::string named(const char* name, const std::optional<double> length) {
        return length ? std::string{" "} + name + " " + textOf(*length) : std::string{};
    }
    static std::string lengths(const FixedFrame& frame) {
        return named("width", frame.width) + named("height", frame.height);
    }
    static std::string lengths(const FlexibleFrame& frame) {
        return named("minWidth", frame.minWidth) + named("maxWidth", frame.maxWidth) +
               named("minHeight", frame.minHeight) + named("maxHeight", frame.maxHeight);
    }

    Frame frame_;
};

} // namespace

View View::frame(const FixedFrame& frame) const {
    return makeView<FrameNode<FixedFrame, FixedFrameLayout>>(*this, frame);
}

View View::frame(const FlexibleFrame& frame) const {
    return makeView<FrameNode<FlexibleFrame, FlexibleFrameLayout>>(*this, frame);
}

} // namespace platform::ui
