#include "platform/ui/Node.h"
#include "platform/ui/SceneWriter.h"

// Modifiers that draw, and those that only change what flows down. Frames have a file of their own.

namespace platform::ui {

namespace {

/// A color that runs on to the window's edges.
class ColorBackground : public Modifier {
public:
    ColorBackground(View content, const Color color) : Modifier{std::move(content)}, color_{color} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        scene.add({Fill{scene.underSafeArea(frame), ShapeKind::rectangle, color_}});
        Modifier::place(box, frame, proposal, scene);
    }

private:
    Color color_;
};

/// Another view behind the content, with boxes of its own.
class ViewBackground : public Modifier {
public:
    ViewBackground(View content, View behind) : Modifier{std::move(behind), std::move(content)} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        Box& behind = box.inside().front();
        const Proposal offered{frame.width, frame.height};
        behind.place(frame.origin() + offset(Alignment::center, frame.size(), behind.size(offered)), offered, scene);
        Modifier::place(box, frame, proposal, scene);
    }
};

/// A rectangle's outline over the content.
class Border : public Modifier {
public:
    Border(View content, const Color color, const double width)
        : Modifier{std::move(content)}, color_{color}, width_{width} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        Modifier::place(box, frame, proposal, scene);
        scene.add({Stroke{frame.inset(width_ / 2), ShapeKind::rectangle, color_, width_}});
    }

private:
    Color color_;
    double width_;
};

/// Cuts the content's primitives.
class ClipShape : public Modifier {
public:
    ClipShape(View content, const ShapeKind shape) : Modifier{std::move(content)}, shape_{shape} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        auto inside = scene.collect([&] { Modifier::place(box, frame, proposal, scene); });
        scene.add({Clip{frame, shape_, std::move(inside)}});
    }

private:
    ShapeKind shape_;
};

/// Changes what flows down. The content's box stands for it.
class Inherited : public Modifier {
public:
    using Change = std::function<void(Environment&)>;

    Inherited(View content, Change change) : Modifier{std::move(content)}, change_{std::move(change)} {}

    void resolve(const Environment& environment, std::vector<Box>& boxes) const override {
        Environment inside = environment;
        change_(inside);
        boxes.push_back(boxOf(children().front(), inside));
    }

private:
    Change change_;
};

/// Tells the scene what the window is to look like.
class PreferredScheme : public Modifier {
public:
    PreferredScheme(View content, const ColorScheme scheme) : Modifier{std::move(content)}, scheme_{scheme} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        scene.prefer(scheme_);
        Modifier::place(box, frame, proposal, scene);
    }

private:
    ColorScheme scheme_;
};

} // namespace

View View::background(const Color color) const {
    return makeView<ColorBackground>(*this, color);
}

View View::background(const View& behind) const {
    return makeView<ViewBackground>(*this, behind);
}

View View::border(const Color color, const double width) const {
    return makeView<Border>(*this, color, width);
}

View View::clipShape(const Capsule&) const {
    return makeView<ClipShape>(*this, ShapeKind::capsule);
}

View View::clipShape(const Circle&) const {
    return makeView<ClipShape>(*this, ShapeKind::circle);
}

View View::foregroundColor(const Color color) const {
    return makeView<Inherited>(*this, [=](Environment& inside) { inside.foreground = color; });
}

View View::font(const Font font) const {
    return makeView<Inherited>(*this, [=](Environment& inside) { inside.font = font; });
}

View View::fontWeight(const FontWeight weight) const {
    return makeView<Inherited>(*this, [=](Environment& inside) { inside.fontWeight = weight; });
}

View View::buttonStyle(ButtonStyle style) const {
    return makeView<Inherited>(*this, [style = std::move(style)](Environment& inside) { inside.buttonStyle = style; });
}

View View::accessibilityLabel(std::string label) const {
    return makeView<Inherited>(*this,
                               [label = std::move(label)](Environment& inside) { inside.accessibleName = label; });
}

View View::accessibilityAnnounced() const {
    return makeView<Inherited>(*this, [](Environment& inside) { inside.announced = true; });
}

View View::preferredColorScheme(const ColorScheme scheme) const {
    return makeView<PreferredScheme>(*this, scheme);
}

} // namespace platform::ui
