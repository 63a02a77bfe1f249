#include "platform/ui/Metrics.h"
#include "platform/ui/Node.h"

#include <algorithm>

// Texts, images and shapes.

namespace platform::ui {

namespace {

class TextNode : public Node {
public:
    explicit TextNode(std::string text) : text_{std::move(text)} {}

    bool isText(const Box&) const override { return true; }
    Size size(Box& box, const Proposal& proposal) const override {
        const Size own = ownSize(box);
        if (!proposal.width || own.width - *proposal.width < tolerance) return own;
        return {std::max(0.0, *proposal.width), own.height};
    }
    void place(Box& box, const Rect& frame, const Proposal&, SceneWriter& scene) const override {
        const bool truncated = frame.width < ownSize(box).width;
        const Environment& around = box.environment();
        scene.add({TextRun{frame, text_, fontIn(around), around.foreground, truncated, around.announced}});
    }

private:
    /// How much a line may lack before it is truncated.
    static constexpr double tolerance = 1;

    static Font fontIn(const Environment& around) {
        return {around.font.style, around.fontWeight.value_or(around.font.weight)};
    }
    Size ownSize(const Box& box) const { return box.environment().metrics->textSize(text_, fontIn(box.environment())); }

    std::string text_;
};

class ImageNode : public Node {
public:
    ImageNode(ImageReference image, const bool resizable) : image_{std::move(image)}, resizable_{resizable} {}

    Size size(Box& box, const Proposal& proposal) const override {
        const Size own = box.environment().metrics->imageSize(image_);
        if (!resizable_) return own;
        return {proposal.width.value_or(own.width), proposal.height.value_or(own.height)};
    }
    void place(Box& box, const Rect& frame, const Proposal&, SceneWriter& scene) const override {
        scene.add({ImageRun{frame, image_, box.environment().foreground, box.environment().accessibleName}});
    }

private:
    ImageReference image_;
    bool resizable_;
};

class CircleStroke : public Node {
public:
    CircleStroke(const Color color, const double lineWidth) : color_{color}, lineWidth_{lineWidth} {}

    Size size(Box&, const Proposal& proposal) const override {
        return {proposal.width.value_or(0), proposal.height.value_or(0)};
    }
    void place(Box&, const Rect& frame, const Proposal&, SceneWriter& scene) const override {
        scene.add({Stroke{frame, ShapeKind::circle, color_, lineWidth_}});
    }

private:
    Color color_;
    double lineWidth_;
};

} // namespace

Text Text::verbatim(std::string text) {
    return Text{makeView<TextNode>(std::move(text))};
}

Image::Image(ImageReference reference, const bool resizable)
    : View{makeView<ImageNode>(reference, resizable)}, reference_{std::move(reference)} {
}

Image Image::named(std::string name) {
    return {{std::move(name), ImageReference::Source::asset}, false};
}

Image Image::system(std::string name) {
    return {{std::move(name), ImageReference::Source::system}, false};
}

Image Image::resizable() const {
    return {reference_, true};
}

View Circle::stroke(const Color color, const double lineWidth) const {
    return makeView<CircleStroke>(color, lineWidth);
}

} // namespace platform::ui
