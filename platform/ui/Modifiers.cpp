#include "platform/ui/Node.h"

#include <algorithm>

// Modifiers that draw, and those that only change the environment. Frames are in Frame.cpp.

namespace platform::ui {

namespace {

/// Draws what it adds before or after the content, or around it.
class Drawing : public Modifier {
public:
    using Content = std::function<void()>;
    using Draw = std::function<void(const Rect& frame, const Content& placeContent, SceneWriter& scene)>;

    Drawing(View content, Draw draw) : Modifier{std::move(content)}, draw_{std::move(draw)} {}

    void place(Box& box, const Rect& frame, const Proposal& proposal, SceneWriter& scene) const override {
        const auto placeContent = [&] { Modifier::place(box, frame, proposal, scene); };
        draw_(frame, placeContent, scene);
    }

private:
    Draw draw_;
};

View clipped(View content, const ShapeKind shape) {
    const auto draw = [=](const Rect& frame, const auto& placeContent, SceneWriter& scene) {
        scene.add({Clip{frame, shape, scene.collect(placeContent)}});
    };
    return makeView<Drawing>(std::move(content), draw);
}

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

/// Changes the environment. It has no box besides that of its content.
class Inherited : public Modifier {
public:
    using Change = std::function<void(Environment&)>;

    Inherited(View content, Change change) : Modifier{std::move(content)}, change_{std::move(change)} {}

    void resolve(const Surroundings& environment, std::vector<Box>& boxes) const override {
        const auto inside = std::make_shared<Environment>(*environment);
        change_(*inside);
        appendBoxOf(children().front(), inside, boxes);
    }

private:
    Change change_;
};

} // namespace

View View::background(const Color color) const {
    return makeView<Drawing>(*this, [=](const Rect& frame, const auto& placeContent, SceneWriter& scene) {
        scene.add({Fill{scene.underSafeArea(frame), ShapeKind::rectangle, color}});
        placeContent();
    });
}

View View::background(const View& behind) const {
    return makeView<ViewBackground>(*this, behind);
}

View View::border(const Color color, const double width) const {
    return makeView<Drawing>(*this, [=](const Rect& frame, const auto& placeContent, SceneWriter& scene) {
        placeContent();
        const double line = std::clamp(width, 0.0, std::min(frame.width, frame.height));
        scene.add({Stroke{frame.inset(line / 2), ShapeKind::rectangle, color, line}});
    });
}

View View::clipShape(const Capsule&) const {
    return clipped(*this, ShapeKind::capsule);
}

View View::clipShape(const Circle&) const {
    return clipped(*this, ShapeKind::circle);
}

View View::preferredColorScheme(const ColorScheme scheme) const {
    return makeView<Drawing>(*this, [=](const Rect&, const auto& placeContent, SceneWriter& scene) {
        scene.prefer(scheme);
        placeContent();
    });
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

} // namespace platform::ui
